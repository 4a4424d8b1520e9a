#pragma once

#include <cstdint>
#include <limits>

namespace Zorv::DOM::FormulaSyntaxTree {

enum class NodeKind : std::uint8_t {
  Empty,                ///< the empty value
  Missing,              ///< an argument left out between two commas
  Number,               ///< `number`
  Text,                 ///< `index`: a text
  Boolean,              ///< `index`: 0 or 1
  Error,                ///< `index`: a FormulaErrorCode
  ArrayConstant,        ///< arguments: the values row by row; `index`: how many rows
  Reference,            ///< `index`: a CellReference
  StructuredReference,  ///< `index`: a StructuredReference
  Name,                 ///< `index`: a NameReference, a defined name
  LocalName,            ///< `index`: the slot of a name that LET gives
  Unary,                ///< `op`, one argument
  Binary,               ///< `op`, two arguments
  Function,             ///< `function`: its number in the engine's table; `index`: its name, a text
  UnknownFunction,      ///< `index`: its name, a text
};

enum class Operator : std::uint8_t {
  None,
  // Binary.
  Add,
  Subtract,
  Multiply,
  Divide,
  Power,
  Concatenate,
  Equal,
  NotEqual,
  Less,
  LessOrEqual,
  Greater,
  GreaterOrEqual,
  Range,
  Intersection,
  Union,
  // Unary.
  Plus,
  Negate,
  Percent,
  Single,  ///< `@`: one value out of many
  Spill,   ///< `#`: the range into which a formula's array flows
};

/// "No such entry", for an index of a pool.
inline constexpr std::uint32_t noIndex = std::numeric_limits<std::uint32_t>::max();

/// One node of a formula's tree, as an entry of a flat array in which arguments come before what
/// they belong to; the last entry is the root.
struct Node {
  NodeKind kind = NodeKind::Empty;
  Operator op = Operator::None;
  std::uint16_t function = 0;
  std::uint32_t argumentCount = 0;
  std::uint32_t firstArgument = noIndex;  ///< the entry of the first argument
  /// The entry of the next argument of the same parent; for the last one that of the parent, and
  /// noIndex for the root. So a long chain such as `1+1+1+...` is walked without recursion.
  std::uint32_t next = noIndex;
  std::uint32_t index = noIndex;  ///< an entry of the pool that `kind` tells, or a small number
  double number = 0.0;

  friend bool operator==(Node const&, Node const&) noexcept = default;
};

/// Whether an operator makes references out of references, rather than values out of values.
[[nodiscard]] constexpr bool isReferenceOperator(Operator op) noexcept {
  return op == Operator::Range || op == Operator::Intersection || op == Operator::Union;
}

/// Whether a node is an operator between two values; chains of these are walked, not nested.
[[nodiscard]] constexpr bool isValueOperator(Node const& node) noexcept {
  return node.kind == NodeKind::Binary && !isReferenceOperator(node.op);
}

/// A rectangle of cells: two corners that both belong to it, in the order written, each coordinate
/// absolute or relative by itself. Positions count from 0.
///
/// Whole rows have the columns 0 and 16,383, whole columns the rows 0 and 1,048,575, absolute.
/// After a shift the corners may stand in any order: a reader orders them.
struct CellReference {
  std::uint32_t firstRow = 0;
  std::uint32_t firstColumn = 0;
  std::uint32_t lastRow = 0;
  std::uint32_t lastColumn = 0;
  bool firstRowIsRelative = false;
  bool firstColumnIsRelative = false;
  bool lastRowIsRelative = false;
  bool lastColumnIsRelative = false;
  std::uint32_t sheet = noIndex;  ///< the text that names the sheet (empty: one out of
                                  ///< reach); noIndex: the formula's own

  [[nodiscard]] bool isRelative() const noexcept {
    return firstRowIsRelative || firstColumnIsRelative || lastRowIsRelative || lastColumnIsRelative;
  }

  /// Whether both corners are one, and stay one wherever they are moved.
  [[nodiscard]] bool isSingleCell() const noexcept {
    return firstRow == lastRow && firstColumn == lastColumn &&
           firstRowIsRelative == lastRowIsRelative && firstColumnIsRelative == lastColumnIsRelative;
  }

  friend bool operator==(CellReference const&, CellReference const&) noexcept = default;
};

/// A defined name, of one sheet where the formula says so.
struct NameReference {
  std::uint32_t name = noIndex;   ///< a text
  std::uint32_t sheet = noIndex;  ///< the text that names the sheet, or noIndex

  friend bool operator==(NameReference const&, NameReference const&) noexcept = default;
};

/// A reference such as `Sales[[#Headers],[Amount]:[Total]]` into a list object.
struct StructuredReference {
  std::uint32_t list = noIndex;         ///< the list's name, a text; noIndex: the one of the cell
  std::uint32_t firstColumn = noIndex;  ///< a column's name, a text; noIndex: all columns
  std::uint32_t lastColumn = noIndex;   ///< the same as `firstColumn` where one is named
  bool headers = false;
  bool data = false;
  bool totals = false;
  bool thisRow = false;

  friend bool operator==(StructuredReference const&, StructuredReference const&) noexcept = default;
};

}  // namespace Zorv::DOM::FormulaSyntaxTree
