# Writes page.css and the files of Script/ below SOURCE as string constants to OUTPUT; see
# PageAssets.h.
#
# Comments stand on lines of their own in them, so that they can be left out.

# embed(NAME FILES...): the definition of one constant, as ${NAME}.
function(embed name)
  set(text "")
  foreach(file IN LISTS ARGN)
    file(READ "${SOURCE}/${file}" part)
    string(APPEND text "${part}")
  endforeach()
  string(REGEX REPLACE "(^|\n) *//[^\n]*" "" text "${text}")
  string(REGEX REPLACE "(^|\n) */\\*[^\n]*\\*/" "" text "${text}")
  string(REGEX REPLACE "\n +" "\n" text "${text}")
  string(REGEX REPLACE "\n\n+" "\n" text "${text}")
  set(${name} "std::string_view const ${name} = R\"asset(${text})asset\";" PARENT_SCOPE)
endfunction()

embed(pageStyle page.css)
embed(pageScript Script/positions.js Script/accounts.js Script/rules.js Script/selection.js
      Script/sheets.js Script/search.js Script/start.js)
file(WRITE "${OUTPUT}"
     "#include \"render/Html/PageAssets.h\"\n\nnamespace Zorv::Render {\n\n${pageStyle}\n${pageScript}\n\n}  // namespace Zorv::Render\n")
