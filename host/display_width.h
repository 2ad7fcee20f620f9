// How many terminal columns a text takes: East Asian wide and fullwidth
// characters two, combining marks and format characters none, others one.
#pragma once

#include <string_view>

namespace qmhost {

// The columns UTF-8 text takes in a terminal (bytes that are not UTF-8 take
// one column each).
size_t DisplayWidth(std::string_view utf8);

}  // namespace qmhost
