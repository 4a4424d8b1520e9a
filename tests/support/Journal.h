#pragma once

#include <algorithm>
#include <mutex>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Zorv::TestSupport {

/// The calls that fakes received, in the order in which they came. Several fakes may share one, so
/// that the order between them shows. Safe to use from several threads.
class Journal {
public:
  void note(std::string entry) {
    std::lock_guard const lock(_mutex);
    _entries.push_back(std::move(entry));
  }

  [[nodiscard]] std::vector<std::string> getEntries() const {
    std::lock_guard const lock(_mutex);
    return _entries;
  }

  /// How many entries begin so.
  [[nodiscard]] std::size_t count(std::string_view prefix) const {
    std::lock_guard const lock(_mutex);
    return static_cast<std::size_t>(
        std::count_if(_entries.begin(), _entries.end(),
                      [&](std::string const& entry) { return entry.starts_with(prefix); }));
  }

  void clear() {
    std::lock_guard const lock(_mutex);
    _entries.clear();
  }

private:
  mutable std::mutex _mutex;
  std::vector<std::string> _entries;
};

}  // namespace Zorv::TestSupport
