#include "Formulas/Lookups/SharedWork.h"

#include <utility>

namespace Zorv::Formulas {

void SharedWork::run(std::size_t partCount, DoPart const& doPart) {
  std::unique_lock lock(_mutex);
  _doPart = &doPart;
  _next = 0;
  _partCount = partCount;
  _changed.notify_all();
  while (_next < _partCount) {
    doNext(lock);
  }
  _changed.wait(lock, [this] { return _runningParts == 0; });
  if (std::exception_ptr const failure = std::exchange(_failure, nullptr)) {
    std::rethrow_exception(failure);
  }
}

void SharedWork::help() {
  std::unique_lock lock(_mutex);
  for (;;) {
    _changed.wait(lock, [this] { return _isClosed || _next < _partCount; });
    if (_isClosed) {
      return;
    }
    doNext(lock);
  }
}

void SharedWork::close() {
  std::lock_guard const lock(_mutex);
  _isClosed = true;
  _changed.notify_all();
}

void SharedWork::doNext(std::unique_lock<std::mutex>& lock) {
  std::size_t const part = _next++;
  ++_runningParts;
  lock.unlock();
  std::exception_ptr failure;
  try {
    (*_doPart)(part);
  } catch (...) {
    failure = std::current_exception();
  }
  lock.lock();
  --_runningParts;
  if (failure) {
    _failure = _failure ? _failure : failure;
    _next = _partCount;
  }
  if (_runningParts == 0) {
    _changed.notify_all();
  }
}

}  // namespace Zorv::Formulas
