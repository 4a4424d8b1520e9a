#pragma once

#include <filesystem>
#include <map>
#include <string>

namespace Zorv::Workbook {

/// New bytes of some parts, by name.
using PartContents = std::map<std::string, std::string>;

/// Writes a copy of an archive to `target`, which is overwritten. The parts of that
/// name get new bytes; every other part keeps its packed bytes, its place and its attributes.
///
/// Throws PartError if the archive cannot be read or the target cannot be written; the target then
/// holds anything.
void copyPackage(std::filesystem::path const& source, std::filesystem::path const& target,
                 PartContents const& replaced);

/// True if two archives hold the same parts in the same order, and each part that is not among the
/// replaced ones has the same packed bytes, by their size and checksum. Throws PartError if one
/// cannot be read.
[[nodiscard]] bool hasSameOtherParts(std::filesystem::path const& a, std::filesystem::path const& b,
                                     PartContents const& replaced);

}  // namespace Zorv::Workbook
