#pragma once

/// Each adds the benchmarks of one subject to those that are run.
namespace Zorv::Benchmarks {

void registerAnalysis();
void registerCellCache();
void registerLive();
void registerLoader();
void registerMemory();
void registerPicture();
void registerTable();
void registerThreads();
void registerVisuals();
void registerWholeTable();
void registerWriters();

}  // namespace Zorv::Benchmarks
