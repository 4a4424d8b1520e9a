#pragma once

#include <concepts>
#include <string>
#include <string_view>
#include <vector>

#include <fmt/format.h>

#include "FormulaModel/FormulaValue.h"
#include "records/JsonText.h"

namespace Zorv::Records {

/// Writer of a JSON document from its beginning to its end, with the commas that it needs. Borrows
/// the text that it appends to.
class JsonBuilder {
public:
  explicit JsonBuilder(std::string& json) noexcept : _json(json) {}

  JsonBuilder& beginObject() { return begin('{'); }
  JsonBuilder& endObject() { return end('}'); }
  JsonBuilder& beginArray() { return begin('['); }
  JsonBuilder& endArray() { return end(']'); }

  /// The name of the next value, in an object.
  JsonBuilder& key(std::string_view name) {
    separate();
    appendJsonText(_json, name);
    _json += ':';
    _isFirst = true;
    return *this;
  }

  JsonBuilder& text(std::string_view value) {
    separate();
    appendJsonText(_json, value);
    return *this;
  }
  JsonBuilder& value(FormulaModel::FormulaValue const& value) {
    separate();
    appendJsonValue(_json, value);
    return *this;
  }
  template <std::integral Number>
  JsonBuilder& number(Number value) {
    return raw(fmt::format("{}", value));
  }
  JsonBuilder& boolean(bool value) { return raw(value ? "true" : "false"); }
  JsonBuilder& null() { return raw("null"); }

  /// A value that is JSON already.
  JsonBuilder& raw(std::string_view json) {
    separate();
    _json += json;
    return *this;
  }

private:
  JsonBuilder& begin(char bracket) {
    separate();
    _json += bracket;
    _isFirst = true;
    return *this;
  }
  JsonBuilder& end(char bracket) {
    _json += bracket;
    _isFirst = false;
    return *this;
  }
  /// A comma, but for the first value of an object or an array, and behind a name.
  void separate() {
    if (!_isFirst) {
      _json += ',';
    }
    _isFirst = false;
  }

  std::string& _json;
  bool _isFirst = true;
};

}  // namespace Zorv::Records
