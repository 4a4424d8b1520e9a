// The part of the parser that reads calls of functions.

#include <fmt/format.h>

#include "Formulas/Functions/FunctionRegistry.h"
#include "Formulas/ParseExpr.h"
#include "Formulas/Parsing/Parser.h"

namespace Zorv::Formulas {

Subtree Parser::parseCall(Token const& name) {
  _lexer.take();
  std::string const plain = toPlainFunctionName(name.text);
  std::size_t const outerNames = _localNames.size();
  bool const givesNames = plain == "LET" || plain == "LAMBDA";
  std::vector<Subtree> const arguments = givesNames ? parseArgumentsWithNames() : parseArguments();
  _localNames.shrinkTo(outerNames);
  return checkDepth(parseCallOf(name, arguments));
}

Subtree Parser::parseCallOf(Token const& name, std::vector<Subtree> const& arguments) {
  FunctionRegistry const& registry = FunctionRegistry::get();
  auto const number = registry.find(name.text);
  if (!number) {
    return _builder.addUnknownFunction(toPlainFunctionName(name.text), arguments);
  }
  FunctionEntry const& entry = registry.at(*number);
  if (!entry.signature.accepts(arguments.size())) {
    throw FormulaParseError(
        fmt::format("{} does not take {} arguments", entry.name, arguments.size()), name.position);
  }
  return _builder.addFunction(*number, std::string(entry.name), arguments);
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

/// In LET a name stands before each value but the last one; a name holds from its value on. The
/// names of LAMBDA stand one after the other.
std::vector<Subtree> Parser::parseArgumentsWithNames() {
  std::vector<Subtree> arguments;
  std::string_view pendingName;
  std::uint32_t pendingSlot = 0;
  do {
    if (isLocalNameNext() && pendingName.empty()) {
      pendingName = _lexer.take().text;
      pendingSlot = _builder.makeLocalSlot();
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

bool Parser::isLocalNameNext() const {
  return _lexer.peekKind() == TokenKind::Identifier && _lexer.peekSecond().kind == TokenKind::Comma;
}

}  // namespace Zorv::Formulas
