#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/StoredArchive.h"

namespace Zorv::Fuzzing {

/// A workbook of which some parts change from input to input; the others are packed once.
class WorkbookFrame {
public:
  /// `changing` names parts whose root element is empty but for what an input puts there.
  WorkbookFrame(std::map<std::string, std::string> parts, std::vector<std::string> changing);

  /// The bytes of the workbook with the inner XML of each changing part. Requires one for each.
  [[nodiscard]] std::string fill(std::vector<std::string_view> const& inner) const;

private:
  struct ChangingPart {
    std::string name;
    std::string beforeInner;
    std::string afterInner;
  };

  StoredArchive _packed;
  std::vector<ChangingPart> _changing;
};

}  // namespace Zorv::Fuzzing
