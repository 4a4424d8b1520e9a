#pragma once

#include <filesystem>

namespace Zorv::Workbook {

/// Throws PartError if the first bytes of a file show that it is not an archive. The message names
/// what it is: an encrypted workbook, a binary workbook of the older kind, a text.
void refuseForeignFile(std::filesystem::path const& file);

}  // namespace Zorv::Workbook
