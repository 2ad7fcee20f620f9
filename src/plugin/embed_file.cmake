# Writes a C++ source that holds the bytes of INPUT into OUTPUT.
file(READ "${INPUT}" hex HEX)
string(LENGTH "${hex}" length)
math(EXPR size "${length} / 2")
string(REGEX REPLACE "([0-9a-f][0-9a-f])" "0x\\1," bytes "${hex}")
file(WRITE "${OUTPUT}"
  "// Generated from ${INPUT}; do not edit.\n"
  "#include \"plugin/csv_image.h\"\n"
  "namespace qm {\n"
  "const unsigned char kCsvImagePng[] = {${bytes}};\n"
  "const unsigned int kCsvImagePngSize = ${size};\n"
  "}  // namespace qm\n")
