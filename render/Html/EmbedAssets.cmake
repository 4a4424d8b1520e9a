# Writes page.css and page.js of SOURCE as string constants to OUTPUT; see PageAssets.h.
#
# Comments stand on lines of their own in them, so that they can be left out.

# embed(NAME FILE): the definition of one constant, as ${NAME}.
function(embed name file)
  file(READ "${SOURCE}/${file}" text)
  string(REGEX REPLACE "(^|\n) *//[^\n]*" "" text "${text}")
  string(REGEX REPLACE "(^|\n) */\\*[^\n]*\\*/" "" text "${text}")
  string(REGEX REPLACE "\n +" "\n" text "${text}")
  string(REGEX REPLACE "\n\n+" "\n" text "${text}")
  set(${name} "std::string_view const ${name} = R\"asset(${text})asset\";" PARENT_SCOPE)
endfunction()

embed(pageStyle page.css)
embed(pageScript page.js)
file(WRITE "${OUTPUT}"
     "#include \"render/Html/PageAssets.h\"\n\nnamespace Zorv::Render {\n\n${pageStyle}\n${pageScript}\n\n}  // namespace Zorv::Render\n")
