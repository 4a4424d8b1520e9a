#include "workbook/LoadError.h"

#include <utility>

namespace Zorv::Workbook {

namespace {

std::string compose(std::string const& file, std::string const& part, std::string const& place,
                    std::string const& problem) {
  std::string message = file;
  for (std::string const* piece : {&part, &place, &problem}) {
    if (!piece->empty()) {
      message += ": " + *piece;
    }
  }
  return message;
}

}  // namespace

LoadError::LoadError(std::string file, std::string part, std::string place, std::string problem)
    : BaseRuntimeError(compose(file, part, place, problem)),
      _file(std::move(file)),
      _part(std::move(part)),
      _place(std::move(place)),
      _problem(std::move(problem)) {}

LoadError::~LoadError() = default;

}  // namespace Zorv::Workbook
