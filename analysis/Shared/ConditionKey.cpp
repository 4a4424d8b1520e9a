#include "analysis/Shared/ConditionKey.h"

#include <cstdint>
#include <iterator>
#include <memory>

#include <fmt/format.h>
#include <boost/variant/apply_visitor.hpp>
#include <boost/variant/get.hpp>
#include <boost/variant/static_visitor.hpp>

#include "DOM/Table.h"
#include "workbook/ConditionFormulas.h"

namespace Zorv::Analysis {

namespace {

using DOM::FormulaSyntaxTree::CellReference;
using DOM::FormulaSyntaxTree::Expr;
using DOM::FormulaSyntaxTree::ExprParts;
using DOM::FormulaSyntaxTree::Node;
using DOM::FormulaSyntaxTree::NodeKind;
using DOM::FormulaSyntaxTree::noIndex;

/// Writes keys. Texts are preceded by their length, so that no two keys run into each other.
class KeyWriter : public boost::static_visitor<void> {
public:
  explicit KeyWriter(CellIndex base) noexcept
      : _row(base.getRow().get()), _column(base.getColumn().get()) {}

  void operator()(DOM::NullaryConditionalFormatOperator const& condition) {
    add(condition.getType());
  }
  void operator()(DOM::UnaryConditionalFormatOperator const& condition) {
    add(condition.getType());
  }
  void operator()(DOM::BinaryConditionalFormatOperator const& condition) {
    add(condition.getType());
  }
  void operator()(DOM::TextConditionalFormatOperator const& condition) {
    add(condition.getType());
    if (auto const* const literal = boost::get<std::string>(&condition.getArgument())) {
      addText(*literal);
    }
  }
  void operator()(DOM::TopBottomConditionalFormatOperator const& condition) {
    add(condition.getType());
    addNumbers(condition.getValue(), condition.getUsePercent());
  }
  void operator()(DOM::AboveAverageConditionalFormatOperator const& condition) {
    add(condition.getType());
    addNumbers(condition.getStdDev().value_or(0));
  }
  void operator()(DOM::UniquenessConditionalFormatOperator const& condition) {
    add(condition.type);
  }

  void addFormula(Expr const& formula) {
    for (Node const& node : formula.getParts().nodes) {
      addNode(formula.getParts(), node);
    }
    _key += ';';
  }

  [[nodiscard]] std::string take() && { return std::move(_key); }

private:
  template <class Type>
  void add(Type type) {
    addNumbers(static_cast<unsigned>(type));
  }
  template <class... Numbers>
  void addNumbers(Numbers... numbers) {
    ((_key += fmt::format("{},", static_cast<std::uint64_t>(numbers))), ...);
  }
  void addText(std::string const& text) {
    addNumbers(text.size());
    _key += text;
  }
  void addPooled(ExprParts const& parts, std::uint32_t index) {
    index == noIndex ? addText("-") : addText(parts.texts[index]);
  }

  void addNode(ExprParts const& parts, Node const& node) {
    addNumbers(static_cast<unsigned>(node.kind), static_cast<unsigned>(node.op),
               node.argumentCount);
    switch (node.kind) {
      case NodeKind::Number:
        _key += fmt::format("{:a},", node.number);
        return;
      case NodeKind::Text:
      case NodeKind::Function:
      case NodeKind::UnknownFunction:
        addPooled(parts, node.index);
        return;
      case NodeKind::Reference:
        addReference(parts, parts.references[node.index]);
        return;
      case NodeKind::Name:
        addPooled(parts, parts.names[node.index].name);
        addPooled(parts, parts.names[node.index].sheet);
        return;
      case NodeKind::StructuredReference:
        addStructured(parts, parts.structuredReferences[node.index]);
        return;
      default:
        addNumbers(node.index);
    }
  }

  void addReference(ExprParts const& parts, CellReference const& reference) {
    addCoordinate(reference.firstRow, reference.firstRowIsRelative, _row, DOM::Table::rowCount);
    addCoordinate(reference.firstColumn, reference.firstColumnIsRelative, _column,
                  DOM::Table::columnCount);
    addCoordinate(reference.lastRow, reference.lastRowIsRelative, _row, DOM::Table::rowCount);
    addCoordinate(reference.lastColumn, reference.lastColumnIsRelative, _column,
                  DOM::Table::columnCount);
    addPooled(parts, reference.sheet);
  }

  /// Distances wrap around the sheet's edge, as references do that leave it.
  void addCoordinate(unsigned long position, bool isRelative, unsigned long base,
                     unsigned long count) {
    _key += isRelative ? 'r' : 'a';
    addNumbers(isRelative ? (position + count - base) % count : position);
  }

  void addStructured(ExprParts const& parts,
                     DOM::FormulaSyntaxTree::StructuredReference const& reference) {
    addPooled(parts, reference.list);
    addPooled(parts, reference.firstColumn);
    addPooled(parts, reference.lastColumn);
    addNumbers(reference.headers, reference.data, reference.totals, reference.thisRow);
  }

  unsigned long _row;
  unsigned long _column;
  std::string _key;
};

}  // namespace

std::string makeConditionKey(DOM::ConditionalFormatOperator const& condition, CellIndex base) {
  KeyWriter writer(base);
  boost::apply_visitor(writer, condition);
  for (Expr const* const formula : Workbook::listFormulas(condition)) {
    writer.addFormula(*formula);
  }
  return fmt::format("{}:{}", condition.which(), std::move(writer).take());
}

bool dependsOnRanges(DOM::ConditionalFormatOperator const& condition) noexcept {
  constexpr int firstOfThem = 4;  // top or bottom, average, uniqueness
  return condition.which() >= firstOfThem;
}

}  // namespace Zorv::Analysis
