#include "Formulas/EvaluationSession.h"

#include "Formulas/Evaluation/Workspace.h"

namespace Zorv::Formulas {

EvaluationSession::EvaluationSession() noexcept = default;
EvaluationSession::EvaluationSession(EvaluationSession&&) noexcept = default;
EvaluationSession& EvaluationSession::operator=(EvaluationSession&&) noexcept = default;
EvaluationSession::~EvaluationSession() = default;

Workspace& EvaluationSession::obtainWorkspace() {
  if (!_workspace) {
    _workspace = std::make_unique<Workspace>();
  }
  return *_workspace;
}

}  // namespace Zorv::Formulas
