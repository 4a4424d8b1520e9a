#include "analysis/Shared/TargetFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <random>
#include <system_error>

#include <fmt/format.h>

namespace Zorv::Analysis {

namespace {

namespace fs = std::filesystem;

constexpr mode_t accessBits = 07777;

[[noreturn]] void failOn(fs::path const& file, std::string const& problem) {
  throw TargetError(fmt::format("{}: {}", file.string(), problem));
}

std::string describeError(int code) { return std::generic_category().message(code); }

/// File descriptor that is closed with its object.
class Descriptor {
public:
  explicit Descriptor(int descriptor) noexcept : _descriptor(descriptor) {}
  ~Descriptor() {
    if (_descriptor >= 0) {
      close(_descriptor);
    }
  }
  Descriptor(Descriptor const&) = delete;
  Descriptor& operator=(Descriptor const&) = delete;

  [[nodiscard]] int get() const noexcept { return _descriptor; }

private:
  int _descriptor;
};

/// The file that a path leads to, through symbolic links.
fs::path follow(fs::path const& target) {
  std::error_code error;
  if (!fs::is_symlink(target, error)) {
    return target;
  }
  fs::path resolved = fs::canonical(target, error);
  if (error) {
    failOn(target, "is a symbolic link that leads to no file; name the file itself");
  }
  return resolved;
}

/// Throws unless the target may be written. Returns its access rights, or 0 if there is none.
mode_t checkTarget(fs::path const& target, fs::path const& source, bool mayReplace) {
  struct stat status {};
  if (stat(target.c_str(), &status) != 0) {
    if (errno != ENOENT) {
      failOn(target, fmt::format("cannot be written ({})", describeError(errno)));
    }
    return 0;
  }
  if (S_ISDIR(status.st_mode)) {
    failOn(target, "is a folder; name a file");
  }
  if (!S_ISREG(status.st_mode)) {
    failOn(target, "is no ordinary file; name one");
  }
  std::error_code error;
  if (!mayReplace && !fs::equivalent(target, source, error)) {
    failOn(target, "exists already; name another file, or replace it with --force");
  }
  return status.st_mode & accessBits;
}

std::string makeSuffix(std::random_device& random) {
  constexpr std::string_view letters = "abcdefghijklmnopqrstuvwxyz0123456789";
  std::string suffix;
  for (int i = 0; i < 8; ++i) {
    suffix += letters[random() % letters.size()];
  }
  return suffix;
}

/// Creates an empty file beside the target.
fs::path createBeside(fs::path const& target) {
  fs::path const folder = target.has_parent_path() ? target.parent_path() : fs::path(".");
  std::random_device random;
  for (;;) {
    fs::path file = folder / fmt::format(".{}.{}", target.filename().string(), makeSuffix(random));
    constexpr mode_t usualMode = 0666;
    Descriptor const created(
        open(file.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, usualMode));
    if (created.get() >= 0) {
      return file;
    }
    if (errno == ENOENT) {
      failOn(target, fmt::format("there is no folder {}", folder.string()));
    }
    if (errno != EEXIST) {
      failOn(target, fmt::format("cannot be written into its folder ({})", describeError(errno)));
    }
  }
}

/// Brings what was written to the disk.
bool synchronise(fs::path const& file, int flags) noexcept {
  Descriptor const opened(open(file.c_str(), flags | O_CLOEXEC));
  return opened.get() >= 0 && fsync(opened.get()) == 0;
}

}  // namespace

TargetFile::TargetFile(fs::path const& target, fs::path const& source, bool mayReplace)
    : _target(follow(target)) {
  mode_t const replacedMode = checkTarget(_target, source, mayReplace);
  _temporary = createBeside(_target);
  struct stat status {};
  stat(_temporary.c_str(), &status);
  _mode = replacedMode != 0 ? replacedMode : status.st_mode & accessBits;
}

TargetFile::~TargetFile() {
  if (!_temporary.empty()) {
    std::error_code ignored;
    fs::remove(_temporary, ignored);
  }
}

void TargetFile::commit() {
  if (chmod(_temporary.c_str(), _mode) != 0 || !synchronise(_temporary, O_RDONLY)) {
    failOn(_target, fmt::format("cannot be written ({})", describeError(errno)));
  }
  if (rename(_temporary.c_str(), _target.c_str()) != 0) {
    failOn(_target, fmt::format("cannot be put in place ({})", describeError(errno)));
  }
  _temporary.clear();
}

}  // namespace Zorv::Analysis
