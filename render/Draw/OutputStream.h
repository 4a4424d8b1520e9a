#pragma once

#include <cairo.h>

#include <exception>
#include <utility>

#include "render/Drawing.h"

namespace Zorv::Render::Draw {

/// Hands what cairo writes to a sink, and keeps an exception of the sink for the caller, since none
/// may pass through cairo.
///
class OutputStream {
public:
  explicit OutputStream(ByteSink sink) : _sink(std::move(sink)) {}

  /// For cairo: `stream` is an OutputStream.
  static cairo_status_t write(void* stream, unsigned char const* bytes, unsigned size) noexcept;
  /// Drops what cairo still writes.
  void close() noexcept { _isOpen = false; }
  /// Throws what the sink has thrown, else like checkStatus().
  void check(cairo_status_t status) const;

private:
  ByteSink _sink;
  std::exception_ptr _failure;
  bool _isOpen = true;
};

}  // namespace Zorv::Render::Draw
