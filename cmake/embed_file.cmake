# Writes a C++ source that holds the bytes of one file:
#   cmake -DINPUT=file -DOUTPUT=file.cpp -DNAME=symbol -P embed_file.cmake
# The program then finds its texts without looking for files at run time.
file(READ ${INPUT} bytes HEX)
string(REGEX REPLACE "(..)" "'\\\\x\\1'," bytes "${bytes}")
string(REGEX REPLACE "('\\\\x..',)('\\\\x..',)('\\\\x..',)('\\\\x..',)('\\\\x..',)('\\\\x..',)('\\\\x..',)('\\\\x..',)"
  "\\1\\2\\3\\4\\5\\6\\7\\8\n" bytes "${bytes}")
file(WRITE ${OUTPUT} "#include <string_view>
namespace velotap::embedded {
namespace {
const char kBytes[] = {${bytes}'\\0'};
}
extern const std::string_view ${NAME};
const std::string_view ${NAME}(kBytes, sizeof(kBytes) - 1);
}  // namespace velotap::embedded
")
