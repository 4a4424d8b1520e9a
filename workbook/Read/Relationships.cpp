#include "workbook/Read/Relationships.h"

#include <algorithm>
#include <charconv>

#include "workbook/Xml/OpenXml.h"
#include "workbook/Xml/XmlTree.h"

namespace Zorv::Workbook {

namespace {

std::string_view folderOf(std::string_view part) noexcept {
  std::size_t const slash = part.rfind('/');
  return slash == std::string_view::npos ? std::string_view() : part.substr(0, slash + 1);
}

/// `xl/_rels/workbook.xml.rels` for `xl/workbook.xml`.
std::string relationshipsPartOf(std::string_view part) {
  std::string_view const folder = folderOf(part);
  return std::string(folder) + "_rels/" + std::string(part.substr(folder.size())) + ".rels";
}

/// Decodes `%HH`.
std::string decodePercent(std::string_view text) {
  std::string decoded;
  for (std::size_t at = 0; at < text.size(); ++at) {
    unsigned char character = 0;
    bool const isEscape =
        text[at] == '%' && at + 2 < text.size() &&
        std::from_chars(text.data() + at + 1, text.data() + at + 3, character, 16).ptr ==
            text.data() + at + 3;
    decoded += isEscape ? static_cast<char>(character) : text[at];
    at += isEscape ? 2 : 0;
  }
  return decoded;
}

}  // namespace

std::string resolveTarget(std::string_view part, std::string_view target) {
  std::string path = decodePercent(target);
  std::replace(path.begin(), path.end(), '\\', '/');
  if (!path.starts_with('/')) {
    path.insert(0, folderOf(part));
  }
  std::vector<std::string_view> steps;
  std::string_view rest = path;
  while (!rest.empty()) {
    std::string_view const step = rest.substr(0, rest.find('/'));
    rest.remove_prefix(std::min(rest.size(), step.size() + 1));
    if (step == ".." && !steps.empty()) {
      steps.pop_back();
    } else if (!step.empty() && step != "." && step != "..") {
      steps.push_back(step);
    }
  }
  std::string resolved;
  for (std::string_view const step : steps) {
    resolved += resolved.empty() ? "" : "/";
    resolved += step;
  }
  return resolved;
}

Relationships::Relationships(Archive& archive, std::string_view part, Limits const& limits) {
  std::string const name = relationshipsPartOf(part);
  if (!archive.has(name)) {
    return;
  }
  auto const reader = openXml(archive, name, PartUse::Whole, limits);
  pugi::xml_document document;
  for (pugi::xml_node const element : readRoot(*reader, document, "Relationships")) {
    add(part, element);
  }
}

void Relationships::add(std::string_view part, pugi::xml_node element) {
  bool const isExternal = std::string_view(element.attribute("TargetMode").value()) == "External";
  std::string_view const type = element.attribute("Type").value();
  std::string_view const target = element.attribute("Target").value();
  _indexById.emplace(element.attribute("Id").value(), _relationships.size());
  _relationships.push_back(
      {element.attribute("Id").value(), std::string(type.substr(type.rfind('/') + 1)),
       isExternal ? std::string(target) : resolveTarget(part, target), isExternal});
}

Relationship const* Relationships::find(std::string_view id) const {
  Relationship const* const found = findAny(id);
  return found != nullptr && !found->isExternal ? found : nullptr;
}

Relationship const* Relationships::findExternal(std::string_view id) const {
  Relationship const* const found = findAny(id);
  return found != nullptr && found->isExternal ? found : nullptr;
}

Relationship const* Relationships::findAny(std::string_view id) const {
  auto const found = _indexById.find(std::string(id));
  return found == _indexById.end() ? nullptr : &_relationships[found->second];
}

Relationship const* Relationships::findKind(std::string_view kind) const noexcept {
  auto const found = std::find_if(
      _relationships.begin(), _relationships.end(),
      [kind](Relationship const& entry) { return entry.kind == kind && !entry.isExternal; });
  return found == _relationships.end() ? nullptr : &*found;
}

}  // namespace Zorv::Workbook
