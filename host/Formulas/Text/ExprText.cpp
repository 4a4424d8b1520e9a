#include "Formulas/Text/ExprText.h"

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <utility>

#include <fmt/format.h>

#include "DOM/A1Notation.h"
#include "FormulaModel/FormulaValueAccess.h"
#include "Formulas/Text/Characters.h"
#include "Formulas/Text/ReferenceText.h"
#include "Utils/CaseFolding.h"

namespace Zorv::Formulas {

namespace {

using DOM::A1Notation::Shape;
using DOM::FormulaSyntaxTree::ExprParts;
using DOM::FormulaSyntaxTree::Node;
using DOM::FormulaSyntaxTree::NodeKind;
using DOM::FormulaSyntaxTree::noIndex;
using DOM::FormulaSyntaxTree::Operator;

/// How tightly the outermost operator of a text binds.
enum class Rank : std::uint8_t {
  Union,
  Comparison,
  Concatenation,
  Sum,
  Product,
  Power,
  Sign,
  Percent,
  Intersection,
  Range,
  Spill,
  Primary,
};

struct OperatorText {
  std::string_view sign;
  Rank rank;
};

OperatorText textOf(Operator op) noexcept {
  switch (op) {
    case Operator::Add:
      return {"+", Rank::Sum};
    case Operator::Subtract:
      return {"-", Rank::Sum};
    case Operator::Multiply:
      return {"*", Rank::Product};
    case Operator::Divide:
      return {"/", Rank::Product};
    case Operator::Power:
      return {"^", Rank::Power};
    case Operator::Concatenate:
      return {"&", Rank::Concatenation};
    case Operator::Equal:
      return {"=", Rank::Comparison};
    case Operator::NotEqual:
      return {"<>", Rank::Comparison};
    case Operator::Less:
      return {"<", Rank::Comparison};
    case Operator::LessOrEqual:
      return {"<=", Rank::Comparison};
    case Operator::Greater:
      return {">", Rank::Comparison};
    case Operator::GreaterOrEqual:
      return {">=", Rank::Comparison};
    case Operator::Range:
      return {":", Rank::Range};
    case Operator::Intersection:
      return {" ", Rank::Intersection};
    case Operator::Union:
      return {",", Rank::Union};
    case Operator::Plus:
      return {"+", Rank::Sign};
    case Operator::Negate:
      return {"-", Rank::Sign};
    case Operator::Percent:
      return {"%", Rank::Percent};
    case Operator::Single:
      return {"@", Rank::Spill};
    case Operator::Spill:
      return {"#", Rank::Spill};
    case Operator::None:
      break;
  }
  return {"", Rank::Primary};
}

/// The text of a subtree.
struct Piece {
  std::string text;
  Rank rank = Rank::Primary;
};

std::string quoteText(std::string_view text) {
  std::string quoted = "\"";
  for (char const c : text) {
    quoted.append(c == '"' ? 2 : 1, c);
  }
  return quoted + '"';
}

std::string writeNumber(double number) {
  std::string text = fmt::format("{}", number);
  std::ranges::replace(text, 'e', 'E');
  return text;
}

/// True if a text is a name that would be read as a cell off the sheet before a colon.
bool readsOffSheet(std::string_view text) noexcept {
  text.remove_prefix(std::min(text.find_first_not_of('@'), text.size()));
  return DOM::A1Notation::readCell(text).shape == Shape::PastColumns;
}

/// True if a text begins with what a colon would join to the word before it: a cell, a column, or a
/// row.
bool beginsAsCorner(std::string_view text) noexcept {
  std::string_view const word = text.substr(
      0, static_cast<std::size_t>(std::ranges::find_if_not(text, isIdentifierPart) - text.begin()));
  return !word.empty() && (isAsciiDigit(word.front()) || DOM::A1Notation::readColumn(word) ||
                           DOM::A1Notation::readCell(word).shape != Shape::Other);
}

/// Writes the nodes of a tree from the leaves to the root.
class TreeWriter {
public:
  TreeWriter(ExprParts const& parts, std::vector<bool> const& isWanted)
      : _parts(parts), _isWanted(isWanted), _pieces(parts.nodes.size()) {}

  std::vector<std::string> write() {
    std::vector<std::string> texts(_parts.nodes.size());
    for (std::uint32_t node = 0; node < _parts.nodes.size(); ++node) {
      _pieces[node] = writeNode(_parts.nodes[node]);
      if (_isWanted[node]) {
        texts[node] = _pieces[node].text;
      }
    }
    return texts;
  }

private:
  Piece writeNode(Node const& node) {
    switch (node.kind) {
      case NodeKind::Number:
        return {writeNumber(node.number), node.number < 0 ? Rank::Sign : Rank::Primary};
      case NodeKind::Text:
        return {quoteText(textAt(node.index))};
      case NodeKind::Boolean:
        return {node.index != 0 ? "TRUE" : "FALSE"};
      case NodeKind::Error:
        return {std::string(
            FormulaModel::toText(static_cast<FormulaModel::FormulaErrorCode>(node.index)))};
      case NodeKind::ArrayConstant:
        return {writeArray(node)};
      case NodeKind::Reference:
        return {writeReference(_parts, _parts.references[node.index])};
      case NodeKind::StructuredReference:
        return {writeReference(_parts, _parts.structuredReferences[node.index])};
      case NodeKind::LocalName:
        return {_parts.localNames[node.index]};
      case NodeKind::Name:
        return {writeReference(_parts, _parts.names[node.index])};
      case NodeKind::Unary:
        return writeUnary(node);
      case NodeKind::Binary:
        return writeBinary(node);
      case NodeKind::Function:
      case NodeKind::UnknownFunction:
        return {writeCall(nameFunction(node), node.firstArgument, node.argumentCount)};
      case NodeKind::Call:
        return {writeCall(take(node.firstArgument, Rank::Primary),
                          _parts.nodes[node.firstArgument].next, node.argumentCount - 1)};
      default:
        return {};
    }
  }

  [[nodiscard]] std::string const& textAt(std::uint32_t index) const { return _parts.texts[index]; }

  /// The text of an argument, in parentheses if it binds less tightly than its place demands. It is
  /// moved: an argument has one parent.
  std::string take(std::uint32_t node, Rank loosest) {
    Piece& piece = _pieces[node];
    return piece.rank < loosest ? '(' + std::move(piece.text) + ')' : std::move(piece.text);
  }

  Piece writeUnary(Node const& node) {
    auto const [sign, rank] = textOf(node.op);
    bool const isBehind = node.op == Operator::Percent || node.op == Operator::Spill;
    auto argument = take(node.firstArgument, node.op == Operator::Spill ? Rank::Primary : rank);
    return {isBehind ? std::move(argument.append(sign)) : std::string(sign) + argument, rank};
  }

  /// Operators of one rank are read from the left, so only the right one needs parentheses.
  Piece writeBinary(Node const& node) {
    auto const [sign, rank] = textOf(node.op);
    auto text = take(node.firstArgument, rank);
    if (node.op == Operator::Range && readsOffSheet(text)) {
      text = '(' + text + ')';
    }
    text += sign;
    std::uint32_t const rightNode = _parts.nodes[node.firstArgument].next;
    auto const right = take(rightNode, static_cast<Rank>(static_cast<int>(rank) + 1));
    text += mustStandAlone(node.op, rightNode, right) ? '(' + right + ')' : right;
    // A union is no argument of anything without its parentheses, nor a formula.
    return node.op == Operator::Union ? Piece{'(' + text + ')'} : Piece{std::move(text), rank};
  }

  /// True if a right operand would be read as a part of something else. Cells and columns behind a
  /// colon are corners of the range that they end, and sheets the ends of a range of sheets; a
  /// space is an operator before a reference alone, of which whole rows begin with a digit.
  [[nodiscard]] bool mustStandAlone(Operator op, std::uint32_t right, std::string_view text) const {
    if (op == Operator::Range) {
      Node const& node = _parts.nodes[right];
      return node.kind == NodeKind::Reference || beginsAsCorner(text) ||
             (node.kind == NodeKind::Name && _parts.names[node.index].sheet != noIndex);
    }
    if (op != Operator::Intersection || text.empty()) {
      return false;
    }
    return isAsciiDigit(text.front())
               ? text.find(':') == std::string_view::npos
               : std::string_view("\"#{").find(text.front()) != std::string_view::npos;
  }

  /// A function's name, with the prefix of files in front where a local name would hide it.
  [[nodiscard]] std::string nameFunction(Node const& node) const {
    std::string name = textAt(node.index);
    while (std::ranges::any_of(_parts.localNames, [upper = toAsciiUpper(name)](auto const& local) {
      return toAsciiUpper(local) == upper;
    })) {
      name.insert(0, "_xlfn.");
    }
    return name;
  }

  std::string writeCall(std::string name, std::uint32_t argument, std::uint32_t count) {
    name += '(';
    for (std::uint32_t i = 0; i < count; ++i) {
      name += i == 0 ? "" : ",";
      name += take(argument, Rank::Comparison);
      argument = _parts.nodes[argument].next;
    }
    return name + ')';
  }

  std::string writeArray(Node const& node) {
    std::uint32_t const columns = node.argumentCount / node.index;
    std::string text = "{";
    std::uint32_t argument = node.firstArgument;
    for (std::uint32_t i = 0; i < node.argumentCount; ++i) {
      text += i == 0 ? "" : i % columns == 0 ? ";" : ",";
      text += _pieces[argument].text;
      argument = _parts.nodes[argument].next;
    }
    return text + '}';
  }

  ExprParts const& _parts;
  std::vector<bool> const& _isWanted;
  std::vector<Piece> _pieces;
};

}  // namespace

std::vector<std::string> writeNodes(ExprParts const& parts, std::vector<bool> const& isWanted) {
  return TreeWriter(parts, isWanted).write();
}

}  // namespace Zorv::Formulas
