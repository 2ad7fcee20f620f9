// The image "csv" compiled into the core is the PNG file of the sources.
#include "plugin/csv_image.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace {

uint32_t BigEndian32(const unsigned char* p) {
  return (uint32_t{p[0]} << 24) | (uint32_t{p[1]} << 16) | (uint32_t{p[2]} << 8) | p[3];
}

TEST(EmbeddedImage, IsThe32By32PngOfTheSources) {
  ASSERT_GT(qm::kCsvImagePngSize, 33u);
  const unsigned char* png = qm::kCsvImagePng;
  const unsigned char signature[8] = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1a, '\n'};
  for (int i = 0; i < 8; ++i) EXPECT_EQ(png[i], signature[i]) << "byte " << i;
  // The first chunk is IHDR: width, height, bit depth, colour type.
  EXPECT_EQ(BigEndian32(png + 8), 13u);
  EXPECT_EQ(std::string(reinterpret_cast<const char*>(png + 12), 4), "IHDR");
  EXPECT_EQ(BigEndian32(png + 16), 32u);
  EXPECT_EQ(BigEndian32(png + 20), 32u);
  // The last chunk is IEND, so nothing was cut off.
  const unsigned char* end = png + qm::kCsvImagePngSize - 8;
  EXPECT_EQ(std::string(reinterpret_cast<const char*>(end), 4), "IEND");
}

TEST(EmbeddedImage, MatchesTheFileByteForByte) {
  std::ifstream file(QMCSV_CSV_PNG_PATH, std::ios::binary);
  ASSERT_TRUE(file) << QMCSV_CSV_PNG_PATH;
  const std::vector<unsigned char> bytes{std::istreambuf_iterator<char>(file), {}};
  ASSERT_EQ(bytes.size(), qm::kCsvImagePngSize);
  EXPECT_TRUE(std::equal(bytes.begin(), bytes.end(), qm::kCsvImagePng));
}

}  // namespace
