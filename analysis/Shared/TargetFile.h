#pragma once

#include <sys/types.h>

#include <filesystem>
#include <string>

#include "Utils/Exceptions.h"

namespace Zorv::Analysis {

/// Thrown when a file cannot be written to its place; what() names the place and says why.
class TargetError : public BaseRuntimeError {
public:
  using BaseRuntimeError::BaseRuntimeError;
};

/// A file that is written beside its place first, and put there at the end as a whole.
///
/// Until commit(), nothing at the place has changed; an object that ends before removes what it has
/// written.
class TargetFile {
public:
  /// `source` is the file that the target is made from; it may be the target itself. Follows a
  /// symbolic link, which then stays. Throws TargetError if the target exists and is no ordinary
  /// file, or is another one than the source unless `mayReplace`; and if nothing can be written
  /// beside it.
  TargetFile(std::filesystem::path const& target, std::filesystem::path const& source,
             bool mayReplace);
  ~TargetFile();
  TargetFile(TargetFile const&) = delete;
  TargetFile& operator=(TargetFile const&) = delete;

  /// The file to be written: empty, in the target's folder.
  [[nodiscard]] std::filesystem::path const& getTemporaryPath() const noexcept {
    return _temporary;
  }

  /// Puts the written file in place, with the access rights of the one that it replaces. Throws
  /// TargetError if that fails.
  void commit();

private:
  std::filesystem::path _target;
  std::filesystem::path _temporary;
  mode_t _mode = 0;
};

}  // namespace Zorv::Analysis
