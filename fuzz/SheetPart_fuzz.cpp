// Loads and resolves a workbook whose sheet is any text: the inner XML of its `worksheet` element.
#include <string_view>

#include "fuzz/Fuzzing.h"

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  std::string_view const sheet(reinterpret_cast<char const*>(data), size);
  Zorv::Fuzzing::loadAndResolve(Zorv::Fuzzing::makeWorkbook(sheet));
  return 0;
}
