#pragma once

#include <cstdint>
#include <limits>

namespace Zorv::DOM::FormulaSyntaxTree {

/// Kind of a node; says which of its members count.
enum class NodeKind : std::uint8_t {
  Empty,                ///< the empty value
  Missing,              ///< an omitted argument
  Number,               ///< `number`
  Text,                 ///< `index`: a text
  Boolean,              ///< `index`: 0 or 1
  Error,                ///< `index`: a FormulaErrorCode
  ArrayConstant,        ///< arguments: the values row by row; `index`: the number of rows
  Reference,            ///< `index`: a CellReference
  StructuredReference,  ///< `index`: a StructuredReference
  LocalName,            ///< `index`: the slot of a name that LET or LAMBDA defines
  Name,                 ///< `index`: a NameReference, a defined name
  Unary,                ///< `op`, one argument
  Binary,               ///< `op`, two arguments
  Function,  ///< `function`: its index in the table of functions; `index`: its name, a text
  /// A call of what is no function of the engine; a defined name of that name may stand for a
  /// LAMBDA. `index`: the name, a text.
  UnknownFunction,
  Call,  ///< a call of a LAMBDA: what is called is the first argument
};

/// Operator of a unary or binary node.
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
  Single,  ///< `@`: implicit intersection
  Spill,   ///< `#`: the range into which a formula's array spills
};

/// Index of no entry in a pool.
inline constexpr std::uint32_t noIndex = std::numeric_limits<std::uint32_t>::max();

/// Node of a formula's tree, in a flat array in which arguments precede their parent; the last
/// entry is the root.
struct Node {
  NodeKind kind = NodeKind::Empty;        ///< says which of the other members count
  Operator op = Operator::None;           ///< of a node that is an operator
  std::uint16_t function = 0;             ///< of a call: its index in the table of functions
  std::uint32_t argumentCount = 0;        ///< of an operator or a call
  std::uint32_t firstArgument = noIndex;  ///< index of the first argument
  /// Index of the next argument of the same parent; for the last argument, of the parent; noIndex
  /// for the root. So a long chain such as `1+1+1+...` is traversed without recursion.
  std::uint32_t next = noIndex;
  std::uint32_t index = noIndex;  ///< index in the pool for `kind`, or a small number
  double number = 0.0;            ///< of a number

  friend bool operator==(Node const&, Node const&) noexcept = default;
};

/// True for operators from references to a reference; the others take values.
[[nodiscard]] constexpr bool isReferenceOperator(Operator op) noexcept {
  return op == Operator::Range || op == Operator::Intersection || op == Operator::Union;
}

/// True for binary operators between values. Chains of them are evaluated without recursion.
[[nodiscard]] constexpr bool isValueOperator(Node const& node) noexcept {
  return node.kind == NodeKind::Binary && !isReferenceOperator(node.op);
}

/// Rectangle of cells: two inclusive corners in the order written. Each coordinate is absolute or
/// relative. Positions start at 0.
///
/// Whole rows have the absolute columns 0 and 16,383, whole columns the absolute rows 0 and
/// 1,048,575. A shift may change the order of the corners; readers sort them.
struct CellReference {
  std::uint32_t firstRow = 0;          ///< of the corner that is written first
  std::uint32_t firstColumn = 0;       ///< of the corner that is written first
  std::uint32_t lastRow = 0;           ///< of the other corner
  std::uint32_t lastColumn = 0;        ///< of the other corner
  bool firstRowIsRelative = false;     ///< the row moves in a shift
  bool firstColumnIsRelative = false;  ///< the column moves in a shift
  bool lastRowIsRelative = false;      ///< the row moves in a shift
  bool lastColumnIsRelative = false;   ///< the column moves in a shift
  /// Index of the sheet's name, a text; noIndex for the formula's own sheet. The text is empty for
  /// a deleted sheet, `[1]Sheet1` for one of another workbook, and `First:Last` for a range of
  /// sheets.
  std::uint32_t sheet = noIndex;

  /// True if a shift moves any coordinate.
  [[nodiscard]] bool isRelative() const noexcept {
    return firstRowIsRelative || firstColumnIsRelative || lastRowIsRelative || lastColumnIsRelative;
  }

  /// True if both corners are the same cell, also after any shift.
  [[nodiscard]] bool isSingleCell() const noexcept {
    return firstRow == lastRow && firstColumn == lastColumn &&
           firstRowIsRelative == lastRowIsRelative && firstColumnIsRelative == lastColumnIsRelative;
  }

  friend bool operator==(CellReference const&, CellReference const&) noexcept = default;
};

/// Defined name, of one sheet where the formula names it.
struct NameReference {
  std::uint32_t name = noIndex;   ///< index of the name, a text
  std::uint32_t sheet = noIndex;  ///< index of the sheet's name, a text, or noIndex

  friend bool operator==(NameReference const&, NameReference const&) noexcept = default;
};

/// Reference into a list object, such as `Sales[[#Headers],[Amount]:[Total]]`.
struct StructuredReference {
  std::uint32_t list = noIndex;         ///< index of the list's name; noIndex: the cell's own list
  std::uint32_t firstColumn = noIndex;  ///< index of a column's name; noIndex: all columns
  std::uint32_t lastColumn = noIndex;   ///< equals `firstColumn` for a single column
  bool headers = false;                 ///< `#Headers`: the header row
  bool data = false;                    ///< `#Data`: the rows between
  bool totals = false;                  ///< `#Totals`: the totals row
  bool thisRow = false;                 ///< `@`: the row of the formula

  friend bool operator==(StructuredReference const&, StructuredReference const&) noexcept = default;
};

}  // namespace Zorv::DOM::FormulaSyntaxTree
