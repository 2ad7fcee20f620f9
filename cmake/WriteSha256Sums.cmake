# Install step of the release package: writes SHA256SUMS over every file
# installed so far, in the format `sha256sum -c` reads ("<hash>  <path>",
# paths relative to the package folder, "/" between folders, sorted).
set(root "$ENV{DESTDIR}${CMAKE_INSTALL_PREFIX}")
file(GLOB_RECURSE files LIST_DIRECTORIES false RELATIVE "${root}" "${root}/*")
list(REMOVE_ITEM files SHA256SUMS)
list(SORT files)
set(sums "")
foreach(f IN LISTS files)
  file(SHA256 "${root}/${f}" hash)
  string(APPEND sums "${hash}  ${f}\n")
endforeach()
file(WRITE "${root}/SHA256SUMS" "${sums}")
list(LENGTH files count)
message(STATUS "Installing: ${root}/SHA256SUMS (${count} files)")
