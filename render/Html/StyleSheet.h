#pragma once

#include <string>
#include <string_view>
#include <unordered_map>

namespace Zorv::Render {

/// Style sheet of a page that grows with what the page needs: one class for each appearance.
class StyleSheet {
public:
  /// The class of some declarations, such as `color:red`. Equal declarations have one class. A `&`
  /// begins a rule for what belongs to the element: `color:red;&::after{...}` nests it.
  ///
  /// Valid as long as the style sheet. Cost: a look-up by the declarations.
  [[nodiscard]] std::string const& classOf(std::string const& declarations);

  /// Adds a rule with a selector of its own.
  void add(std::string_view rule) { _text += rule; }

  [[nodiscard]] std::string const& getText() const noexcept { return _text; }

private:
  std::unordered_map<std::string, std::string> _names;  ///< by declarations
  std::string _text;
};

}  // namespace Zorv::Render
