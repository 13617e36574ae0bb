# Run by a build (see Console.cmake): writes the FILES of the built page in PAGE as C++ to OUTPUT, which
# is what apps/eventd/console/AssetTable.h declares.
#   cmake -D FILES= -D PAGE= -D OUTPUT= -D GZIP= -P EmbedConsole.cmake

set(type_html "text/html; charset=utf-8")
set(type_js "text/javascript; charset=utf-8")
set(type_css "text/css; charset=utf-8")
set(type_svg "image/svg+xml")
set(type_txt "text/plain; charset=utf-8")

set(arrays "")
set(rows "")
set(count 0)

# Sets VARIABLE to a string_view of the file's bytes. Character literals, because a number above 127
# does not fit a char everywhere.
function(add_array variable file)
  file(READ ${file} bytes HEX)
  string(REGEX REPLACE "(..)" "'\\\\x\\1'," bytes "${bytes}")
  string(REPEAT "......." 16 line)
  string(REGEX REPLACE "(${line})" "\\1\n" bytes "${bytes}")
  file(SIZE ${file} size)
  set(arrays "${arrays}constexpr char k${count}[] = {\n${bytes}};\n\n" PARENT_SCOPE)
  set(${variable} "{k${count}, ${size}}" PARENT_SCOPE)
  math(EXPR count "${count} + 1")
  set(count ${count} PARENT_SCOPE)
endfunction()

foreach(file IN LISTS FILES)
  cmake_path(RELATIVE_PATH file BASE_DIRECTORY ${PAGE} OUTPUT_VARIABLE name)
  cmake_path(GET file EXTENSION LAST_ONLY ending)
  string(REPLACE "." "type_" type "${ending}")
  set(path "/${name}")
  set(immutable true)
  if(name STREQUAL index.html)
    set(path "/")
    set(immutable false)
  endif()
  add_array(body ${file})
  set(compressed ${OUTPUT}.gz)
  execute_process(COMMAND ${GZIP} -9 --no-name --stdout ${file} OUTPUT_FILE ${compressed}
                  COMMAND_ERROR_IS_FATAL ANY)
  file(SIZE ${file} size)
  file(SIZE ${compressed} small)
  set(gzip "{}")
  if(small LESS size)
    add_array(gzip ${compressed})
  endif()
  file(REMOVE ${compressed})
  string(APPEND rows "    {\"${path}\", \"${${type}}\", ${body}, ${gzip}, ${immutable}},\n")
endforeach()

file(WRITE ${OUTPUT} "// Made by cmake/EmbedConsole.cmake from the built page.
#include \"apps/eventd/console/AssetTable.h\"

namespace EventApps {
namespace {

${arrays}constexpr Asset kAssets[] = {
${rows}};

}  // namespace

std::span<const Asset> assetTable() {
  return kAssets;
}

}  // namespace EventApps
")
