#pragma once

#include <string>
#include <utility>

#include "Utils/Exceptions.h"

namespace Zorv::Workbook {

/// Damage found in a part of a file; loadWorkbook() adds the file and throws it as LoadError.
class PartError : public BaseRuntimeError {
public:
  PartError(std::string part, std::string place, std::string problem)
      : BaseRuntimeError(problem),
        _part(std::move(part)),
        _place(std::move(place)),
        _problem(std::move(problem)) {}

  [[nodiscard]] std::string const& getPart() const noexcept { return _part; }
  [[nodiscard]] std::string const& getPlace() const noexcept { return _place; }
  [[nodiscard]] std::string const& getProblem() const noexcept { return _problem; }

private:
  std::string _part;
  std::string _place;
  std::string _problem;
};

}  // namespace Zorv::Workbook
