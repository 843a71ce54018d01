# Writes page_files.cpp: cmake -DOUTPUT=... -DFOLDER=... "-DNAMES=a;b" -P embed_page.cmake
set(arrays "")
set(rows "")
set(number 0)
foreach(name IN LISTS NAMES)
  file(READ ${FOLDER}/${name} bytes HEX)
  string(REGEX REPLACE "(................................)" "\\1\n" bytes "${bytes}")
  string(REGEX REPLACE "([0-9a-f][0-9a-f])" "'\\\\x\\1'," bytes "${bytes}")
  string(APPEND arrays "constexpr char FILE_${number}[] = {\n${bytes}'\\0'};\n")
  string(APPEND rows "    {\"${name}\", {FILE_${number}, sizeof FILE_${number} - 1}},\n")
  math(EXPR number "${number} + 1")
endforeach()
file(WRITE ${OUTPUT} "#include \"board/page_files.h\"

#include <array>

namespace {

${arrays}
constexpr std::array<PageFile, ${number}> FILES = {{
${rows}}};

}  // namespace

std::span<const PageFile> PageFiles() {
    return FILES;
}
")
