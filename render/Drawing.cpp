#include "render/Drawing.h"

#include <dlfcn.h>
#include <fmt/format.h>

#include <cmath>
#include <filesystem>
#include <string>

#include "Utils/Exceptions.h"
#include "render/DrawingModule.h"

namespace Zorv::Render {

namespace {

/// The module lies at the same place beside a program in the build tree and where it is installed.
std::filesystem::path findModule() {
  std::error_code error;
  auto const program = std::filesystem::read_symlink("/proc/self/exe", error);
  return (program.parent_path() / CNDFRMT_DRAWING_MODULE).lexically_normal();
}

DrawingModule const& loadModule(std::filesystem::path const& path) {
  // Never closed: the libraries behind it keep state that lives as long as the process.
  void* const handle = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (handle == nullptr) {
    // NOLINTNEXTLINE(concurrency-mt-unsafe): each thread has a message of its own.
    char const* const reason = dlerror();
    throw BaseRuntimeError(fmt::format("cannot draw: the module that draws is not installed ({})",
                                       reason != nullptr ? reason : path.string()));
  }
  auto* const entry = reinterpret_cast<DrawingModuleEntry*>(dlsym(handle, drawingModuleEntryName));
  DrawingModule const* const module = entry != nullptr ? entry() : nullptr;
  if (module == nullptr || module->version != std::string_view(CNDFRMT_VERSION)) {
    throw BaseRuntimeError(
        fmt::format("cannot draw: {} belongs to another version of this program", path.string()));
  }
  return *module;
}

}  // namespace

void draw(Picture const& picture, DrawingFormat format, DrawOptions const& options,
          ByteSink const& sink) {
  constexpr double leastScale = 0.1;
  constexpr double mostScale = 10;
  // Negated, so that it holds for a scale that is not a number, too.
  if (!(options.scale >= leastScale && options.scale <= mostScale)) {
    throw BaseRuntimeError(fmt::format("cannot draw at the scale {}: it must lie between {} and {}",
                                       options.scale, leastScale, mostScale));
  }
  static DrawingModule const& module =
      loadModule(options.module.empty() ? findModule() : options.module);
  module.draw(picture, format, options, sink);
}

}  // namespace Zorv::Render
