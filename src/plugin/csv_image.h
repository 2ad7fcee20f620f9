// The plug-in's one image, "csv", as the PNG bytes the build embeds.
#pragma once

namespace qm {

extern const unsigned char kCsvImagePng[];
extern const unsigned int kCsvImagePngSize;

}  // namespace qm
