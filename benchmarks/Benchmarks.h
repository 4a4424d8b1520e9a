#pragma once

/// Each adds the benchmarks of one subject to those that are run.
namespace Zorv::Benchmarks {

void registerCellCache();
void registerWholeTable();

}  // namespace Zorv::Benchmarks
