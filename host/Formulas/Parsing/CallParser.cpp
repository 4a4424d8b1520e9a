// The part of the parser that reads calls of functions.

#include <fmt/format.h>

#include "DOM/A1Notation.h"
#include "Formulas/FormulaParseError.h"
#include "Formulas/Parsing/Parser.h"

namespace Zorv::Formulas {

using DOM::FormulaSyntaxTree::NodeKind;

Subtree Parser::parseCall(Token const& name) {
  _lexer.take();
  auto const function = _functions.find(name.text);
  bool const bindsNames = function && _functions.at(*function).traits.bindsNames;
  std::size_t const outerNames = _localNames.size();
  std::vector<Subtree> const arguments = !bindsNames           ? parseArguments()
                                         : isLambda(*function) ? parseLambdaArguments()
                                                               : parseLetArguments();
  _localNames.shrinkTo(outerNames);
  return checkDepth(addCall(name, function, arguments));
}

bool Parser::isLambda(std::uint16_t function) const {
  return _functions.at(function).name == "LAMBDA";
}

/// Parses calls of what a subtree gives: `LAMBDA(x,x+1)(2)`.
Subtree Parser::parseCallsOf(Subtree callee) {
  while (_lexer.isAdjacent(TokenKind::OpenParenthesis) && mayBeFunction(callee)) {
    _lexer.take();
    std::vector<Subtree> arguments = parseArguments();
    arguments.insert(arguments.begin(), callee);
    callee = checkDepth(_builder.addCall(arguments));
  }
  return callee;
}

bool Parser::mayBeFunction(Subtree tree) const noexcept {
  auto const& node = _builder.getNode(tree);
  switch (node.kind) {
    case NodeKind::LocalName:
    case NodeKind::UnknownFunction:
    case NodeKind::Call:
      return true;
    case NodeKind::Function:
      return _functions.at(node.function).traits.returnsReference;
    default:
      return false;
  }
}

Subtree Parser::addCall(Token const& name, std::optional<std::uint16_t> function,
                        std::vector<Subtree> const& arguments) {
  if (!function) {
    return _builder.addUnknownFunction(toPlainFunctionName(name.text), arguments);
  }
  FunctionEntry const& entry = _functions.at(*function);
  if (!entry.signature.accepts(arguments.size())) {
    throw FormulaParseError(
        fmt::format("{} does not take {} arguments", entry.name, arguments.size()), name.position);
  }
  return _builder.addFunction(*function, std::string(entry.name), arguments);
}

Subtree Parser::parseArgument() {
  TokenKind const kind = _lexer.peekKind();
  if (kind == TokenKind::Comma || kind == TokenKind::CloseParenthesis) {
    return _builder.addMissing();
  }
  return parseExpression();
}

std::vector<Subtree> Parser::parseArguments() {
  std::vector<Subtree> arguments;
  if (_lexer.takeIf(TokenKind::CloseParenthesis)) {
    return arguments;
  }
  do {
    arguments.push_back(parseArgument());
  } while (_lexer.takeIf(TokenKind::Comma));
  _lexer.expect(TokenKind::CloseParenthesis, "a closing parenthesis");
  return arguments;
}

/// LAMBDA takes names one after the other, then the body.
std::vector<Subtree> Parser::parseLambdaArguments() {
  std::vector<Subtree> arguments;
  while (isLocalNameNext()) {
    std::string_view const name = _lexer.take().text;
    std::uint32_t const slot = _builder.makeLocalSlot(LocalNames::toPlainName(name));
    _localNames.add(name, slot);
    _lexer.take();
    arguments.push_back(_builder.addLocalName(slot));
  }
  std::vector<Subtree> const body = parseArguments();
  arguments.insert(arguments.end(), body.begin(), body.end());
  return arguments;
}

/// LET takes pairs of a name and a value, then the result; a name can be used behind its value.
std::vector<Subtree> Parser::parseLetArguments() {
  std::vector<Subtree> arguments;
  std::string_view pendingName;
  std::uint32_t pendingSlot = 0;
  do {
    if (isLocalNameNext() && pendingName.empty()) {
      pendingName = _lexer.take().text;
      pendingSlot = _builder.makeLocalSlot(LocalNames::toPlainName(pendingName));
      arguments.push_back(_builder.addLocalName(pendingSlot));
      continue;
    }
    arguments.push_back(parseArgument());
    if (!pendingName.empty()) {
      _localNames.add(pendingName, pendingSlot);
      pendingName = {};
    }
  } while (_lexer.takeIf(TokenKind::Comma));
  _lexer.expect(TokenKind::CloseParenthesis, "a closing parenthesis");
  return arguments;
}

/// Cells are no names, with or without dollar signs.
bool Parser::isLocalNameNext() const {
  Token const& token = _lexer.peek();
  return token.kind == TokenKind::Identifier && _lexer.peekSecond().kind == TokenKind::Comma &&
         token.text.find('$') == std::string_view::npos &&
         DOM::A1Notation::readCell(token.text).shape != DOM::A1Notation::Shape::Inside;
}

}  // namespace Zorv::Formulas
