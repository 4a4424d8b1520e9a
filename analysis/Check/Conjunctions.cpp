#include "analysis/Check/Conjunctions.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <vector>

#include <fmt/format.h>
#include <boost/variant/get.hpp>

#include "FormulaModel/FormulaValueAccess.h"
#include "Utils/CaseFolding.h"
#include "analysis/Check/Constants.h"

namespace Zorv::Analysis {

namespace {

using DOM::FormulaSyntaxTree::CellReference;
using DOM::FormulaSyntaxTree::Expr;
using DOM::FormulaSyntaxTree::ExprParts;
using DOM::FormulaSyntaxTree::Node;
using DOM::FormulaSyntaxTree::NodeKind;
using DOM::FormulaSyntaxTree::Operator;

/// `reference op constant`
struct ConstantComparison {
  CellReference reference;
  Operator op = Operator::None;
  FormulaValue constant;
};

Operator mirror(Operator op) noexcept {
  switch (op) {
    case Operator::Less:
      return Operator::Greater;
    case Operator::LessOrEqual:
      return Operator::GreaterOrEqual;
    case Operator::Greater:
      return Operator::Less;
    case Operator::GreaterOrEqual:
      return Operator::LessOrEqual;
    default:
      return op;
  }
}

Node const& argumentOf(ExprParts const& parts, Node const& node, std::uint32_t which) {
  Node const& first = parts.nodes[node.firstArgument];
  return which == 0 ? first : parts.nodes[first.next];
}

std::optional<CellReference> asSingleCell(ExprParts const& parts, Node const& node) {
  if (node.kind != NodeKind::Reference || !parts.references[node.index].isSingleCell()) {
    return std::nullopt;
  }
  return parts.references[node.index];
}

std::optional<ConstantComparison> asComparison(ExprParts const& parts, Node const& node) {
  if (node.kind != NodeKind::Binary || node.op < Operator::Equal ||
      node.op > Operator::GreaterOrEqual) {
    return std::nullopt;
  }
  Node const& left = argumentOf(parts, node, 0);
  Node const& right = argumentOf(parts, node, 1);
  if (auto const cell = asSingleCell(parts, left)) {
    auto const constant = asConstant(parts, right);
    return constant ? std::optional(ConstantComparison{*cell, node.op, *constant}) : std::nullopt;
  }
  auto const cell = asSingleCell(parts, right);
  auto const constant = asConstant(parts, left);
  return cell && constant ? std::optional(ConstantComparison{*cell, mirror(node.op), *constant})
                          : std::nullopt;
}

/// The comparisons among the arguments of the formula's outermost call.
std::vector<ConstantComparison> listComparisons(ExprParts const& parts) {
  Node const& call = parts.nodes.back();
  std::vector<ConstantComparison> comparisons;
  std::uint32_t argument = call.firstArgument;
  for (std::uint32_t i = 0; i < call.argumentCount; ++i) {
    if (auto comparison = asComparison(parts, parts.nodes[argument])) {
      comparisons.push_back(std::move(*comparison));
    }
    argument = parts.nodes[argument].next;
  }
  return comparisons;
}

/// The bounds that comparisons set to the numbers of a cell.
struct Bounds {
  double lower = -std::numeric_limits<double>::infinity();
  double upper = std::numeric_limits<double>::infinity();
  bool lowerIsInside = true;
  bool upperIsInside = true;

  [[nodiscard]] bool isEmpty() const noexcept {
    return lower > upper || (lower == upper && !(lowerIsInside && upperIsInside));
  }

  void add(Operator op, double number) noexcept {
    if (op == Operator::Equal || op == Operator::Greater || op == Operator::GreaterOrEqual) {
      bool const isInside = op != Operator::Greater;
      lowerIsInside = number > lower    ? isInside
                      : number == lower ? lowerIsInside && isInside
                                        : lowerIsInside;
      lower = std::max(lower, number);
    }
    if (op == Operator::Equal || op == Operator::Less || op == Operator::LessOrEqual) {
      bool const isInside = op != Operator::Less;
      upperIsInside = number < upper    ? isInside
                      : number == upper ? upperIsInside && isInside
                                        : upperIsInside;
      upper = std::min(upper, number);
    }
  }
};

bool areDifferentTexts(FormulaValue const& a, FormulaValue const& b) {
  auto const* const first = boost::get<FormulaModel::FormulaString>(&a);
  auto const* const second = boost::get<FormulaModel::FormulaString>(&b);
  return first != nullptr && second != nullptr && foldCase(first->value) != foldCase(second->value);
}

bool areDifferentNumbers(FormulaValue const& a, FormulaValue const& b) {
  return FormulaModel::asFormulaNumberOpt(a) && FormulaModel::asFormulaNumberOpt(b) &&
         numberOf(a) != numberOf(b);
}

/// Comparisons of one cell.
using ComparisonGroup = std::vector<ConstantComparison const*>;

std::vector<ComparisonGroup> groupByCell(std::vector<ConstantComparison> const& comparisons) {
  std::vector<ComparisonGroup> groups;
  for (ConstantComparison const& comparison : comparisons) {
    auto const found = std::ranges::find_if(groups, [&](ComparisonGroup const& group) {
      return group.front()->reference == comparison.reference;
    });
    (found == groups.end() ? groups.emplace_back() : *found).push_back(&comparison);
  }
  return groups;
}

/// Two comparisons of one operator with different constants of one kind.
template <class AreDifferent>
bool hasTwo(ComparisonGroup const& group, Operator op, AreDifferent const& areDifferent) {
  for (auto a = group.begin(); a != group.end(); ++a) {
    for (auto b = a + 1; b != group.end(); ++b) {
      if ((*a)->op == op && (*b)->op == op && areDifferent((*a)->constant, (*b)->constant)) {
        return true;
      }
    }
  }
  return false;
}

/// An empty cell counts as 0 and lies between bounds like any number.
std::optional<std::string> findContradiction(ComparisonGroup const& group) {
  if (hasTwo(group, Operator::Equal, areDifferentTexts)) {
    return "it asks one cell to equal two different texts; OR may be meant where AND is written";
  }
  Bounds bounds;
  for (ConstantComparison const* comparison : group) {
    if (FormulaModel::asFormulaNumberOpt(comparison->constant)) {
      bounds.add(comparison->op, numberOf(comparison->constant));
    }
  }
  return bounds.isEmpty()
             ? std::optional<std::string>("the bounds that AND sets to one cell exclude each other")
             : std::nullopt;
}

/// The opposite of a contradiction: what every part leaves out is nothing.
std::optional<std::string> findTautology(ComparisonGroup const& group) {
  if (hasTwo(group, Operator::NotEqual, areDifferentTexts) ||
      hasTwo(group, Operator::NotEqual, areDifferentNumbers)) {
    return "every value differs from at least one of the two; AND may be meant where OR is "
           "written";
  }
  Bounds leftOut;
  for (ConstantComparison const* comparison : group) {
    if (!FormulaModel::asFormulaNumberOpt(comparison->constant)) {
      continue;
    }
    double const number = numberOf(comparison->constant);
    switch (comparison->op) {
      case Operator::Less:
        leftOut.add(Operator::GreaterOrEqual, number);
        break;
      case Operator::LessOrEqual:
        leftOut.add(Operator::Greater, number);
        break;
      case Operator::Greater:
        leftOut.add(Operator::LessOrEqual, number);
        break;
      case Operator::GreaterOrEqual:
        leftOut.add(Operator::Less, number);
        break;
      default:
        break;
    }
  }
  return leftOut.isEmpty() ? std::optional<std::string>("the parts of OR leave no number out")
                           : std::nullopt;
}

}  // namespace

std::optional<Conjunction> findConjunction(Expr const& expr) {
  auto const& parts = expr.getParts();
  constexpr std::uint32_t mostArguments = 100;
  if (parts.nodes.empty() || parts.nodes.back().kind != NodeKind::Function ||
      parts.nodes.back().argumentCount > mostArguments) {
    return std::nullopt;
  }
  std::string const& name = parts.texts[parts.nodes.back().index];
  bool const isAnd = name == "AND";
  if (!isAnd && name != "OR") {
    return std::nullopt;
  }
  auto const comparisons = listComparisons(parts);
  for (ComparisonGroup const& group : groupByCell(comparisons)) {
    if (auto reason = isAnd ? findContradiction(group) : findTautology(group)) {
      return Conjunction{isAnd, std::move(*reason)};
    }
  }
  return std::nullopt;
}

}  // namespace Zorv::Analysis
