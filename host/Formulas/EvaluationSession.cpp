#include "Formulas/EvaluationSession.h"

#include "Formulas/Evaluation/Workspace.h"
#include "Formulas/LookupCache.h"

namespace Zorv::Formulas {

EvaluationSession::EvaluationSession() noexcept = default;
EvaluationSession::EvaluationSession(LookupCache& lookups) noexcept : _lookups(&lookups) {}
EvaluationSession::EvaluationSession(LookupCache& lookups, OfficeUtils::Moment& moment) noexcept
    : _lookups(&lookups), _moment(&moment) {}
EvaluationSession::~EvaluationSession() = default;

std::uint64_t EvaluationSession::countSteps() const noexcept {
  return _workspace ? _workspace->steps.countSteps() : 0;
}

Workspace& EvaluationSession::getOrCreateWorkspace() {
  if (!_workspace) {
    _workspace = std::make_unique<Workspace>(_budget);
    _workspace->moment = _moment;
    if (_lookups != nullptr) {
      _workspace->lookups.emplace(_lookups->getStore(), _workspace->steps);
    }
  }
  return *_workspace;
}

}  // namespace Zorv::Formulas
