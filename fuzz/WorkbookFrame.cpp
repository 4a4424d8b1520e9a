#include "fuzz/WorkbookFrame.h"

#include <utility>

namespace Zorv::Fuzzing {

WorkbookFrame::WorkbookFrame(std::map<std::string, std::string> parts,
                             std::vector<std::string> changing) {
  for (std::string& name : changing) {
    std::string const part = std::move(parts.extract(name).mapped());
    auto const end = part.rfind("</");
    _changing.push_back({std::move(name), part.substr(0, end), part.substr(end)});
  }
  for (auto const& [name, content] : parts) {
    _packed.add(name, content);
  }
}

std::string WorkbookFrame::fill(std::vector<std::string_view> const& inner) const {
  StoredArchive archive = _packed;
  for (std::size_t part = 0; part < _changing.size(); ++part) {
    auto const& [name, before, after] = _changing[part];
    std::string content = before;
    archive.add(name, content.append(inner.at(part)).append(after));
  }
  return archive.getBytes();
}

}  // namespace Zorv::Fuzzing
