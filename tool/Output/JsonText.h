#pragma once

#include <string>

#include "tool/Input/Selection.h"
#include "tool/Output/ResolveOutput.h"

/// The tool's JSON as text; docs/tool.md describes its shape. Members keep the order in which they
/// are documented, and bytes that are not UTF-8 become the replacement character.
///
/// JsonText.cpp is the one source that includes the JSON library, which is slow to compile.
namespace Zorv::Tool {

/// A quoted text.
[[nodiscard]] std::string toJsonText(std::string const& text);

/// The first members of every document: the file and the options. One line, without the closing
/// brace, so that more members can follow.
[[nodiscard]] std::string beginJsonDocument(Selection const& selection);

/// The numbers of rules that were read, resolved and not resolved. One line.
[[nodiscard]] std::string toJsonSummary(Selection const& selection);

/// A cell with its value, its style and the deciding rules. One line.
[[nodiscard]] std::string toJsonText(ResolvedCell const& cell);

/// The whole document of `cndfrmt rules`, indented, without a line end.
[[nodiscard]] std::string toJsonRules(Selection const& selection);

}  // namespace Zorv::Tool
