// Prints docs/functions.md from the table of functions.

#include <algorithm>
#include <string>
#include <string_view>

#include <fmt/format.h>

#include "Formulas/Functions/BuiltinFunctions.h"

namespace {

using Zorv::Formulas::FunctionEntry;

/// The arguments of a signature as users write them: without the kinds, and with an ellipsis for
/// what may be repeated.
std::string writeArguments(std::string_view signature) {
  std::string text;
  bool isInGroup = false;
  for (std::size_t i = 0; i < signature.size(); ++i) {
    char const c = signature[i];
    if (c == '(') {
      text += "...";
    }
    isInGroup = c == '(' || (isInGroup && c != ')');
    if (c == ':') {
      ++i;
    } else if (!isInGroup && c != ')') {
      text += c;
    }
  }
  return text;
}

bool isCalculated(FunctionEntry const* entry) { return entry->calculate != nullptr; }

}  // namespace

int main() {
  auto const entries = Zorv::Formulas::builtinFunctions().entries();
  fmt::print(
      "# Functions\n\n"
      "Formulas may call these {} functions. Letter case does not matter. Arguments in brackets "
      "may "
      "be left out; `...` stands for more of the arguments before it. A call of any other function "
      "gives `#NAME?`.\n\n"
      "This page is made from the table of functions: `make docs` writes it.\n\n"
      "| function | result |\n|---|---|\n",
      std::ranges::count_if(entries, isCalculated));
  for (FunctionEntry const* const entry : entries) {
    if (isCalculated(entry)) {
      fmt::print("| `{}({})` | {} |\n", entry->name, writeArguments(entry->signature.text()),
                 entry->summary);
    }
  }
}
