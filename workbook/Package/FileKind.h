#pragma once

#include <filesystem>

namespace Zorv::Workbook {

/// Throws PartError for a file that can be told from its first bytes to be no archive, with what it
/// is in place of one: an encrypted workbook, a binary workbook of the older kind, a text.
void refuseForeignFile(std::filesystem::path const& file);

}  // namespace Zorv::Workbook
