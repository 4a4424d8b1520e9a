#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <unordered_map>
#include <utility>

namespace Zorv::Tool {

/// Texts by key, each made once while the cache is not full. A full cache begins anew, so that
/// memory stays bounded however many keys there are.
template <class Key, class Hash>
class TextCache {
public:
  /// The text of a key, by `make()` the first time. Valid until the next call.
  template <class Make>
  [[nodiscard]] std::string const& getOrCreate(Key const& key, Make const& make) {
    if (_last != nullptr && _last->first == key) {
      return _last->second;  // neighbours mostly look alike
    }
    auto found = _texts.find(key);
    if (found == _texts.end()) {
      _last = nullptr;
      auto text = make();
      _bytes += text.size();
      if (_bytes > mostBytes) {
        _texts.clear();
        _bytes = text.size();
      }
      found = _texts.emplace(key, std::move(text)).first;
    }
    _last = &*found;
    return found->second;
  }

private:
  static constexpr std::size_t mostBytes = 4'194'304;

  std::unordered_map<Key, std::string, Hash> _texts;
  std::pair<Key const, std::string> const* _last = nullptr;
  std::size_t _bytes = 0;
};

}  // namespace Zorv::Tool
