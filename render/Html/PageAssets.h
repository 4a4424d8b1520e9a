#pragma once

#include <string_view>

/// Files of this folder as they were when the program was built, without comments and indentation.
namespace Zorv::Render {

extern std::string_view const pageStyle;   ///< page.css
extern std::string_view const pageScript;  ///< the files of Script/, one after the other

}  // namespace Zorv::Render
