#include "platform/large_block_cache.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <map>
#include <vector>

namespace qm {
namespace {

// A system that checks every block comes back once, with its own size.
std::map<void*, size_t> g_live;
size_t g_allocations = 0;

void* FakeAllocate(size_t bytes) {
  void* block = std::malloc(bytes);
  g_live[block] = bytes;
  ++g_allocations;
  return block;
}

void FakeRelease(void* block, size_t bytes) noexcept {
  const auto found = g_live.find(block);
  ASSERT_NE(found, g_live.end());
  EXPECT_EQ(found->second, bytes);
  g_live.erase(found);
  std::free(block);
}

constexpr size_t kK = 1024;

// Each step takes a block of `take` bytes (remembered as the next number) or
// gives back the block of number `give`; then the system has made
// `allocations` blocks in all and the cache keeps `keptBytes`.
struct Step {
  size_t take;
  int give;
  size_t allocations;
  size_t keptBytes;
};

struct Case {
  const char* rule;
  std::vector<Step> steps;
};

TEST(LargeBlockCache, ReusesFittingBlocksWithinItsBound) {
  const std::vector<Case> cases = {
      {"a freed block serves the same size", {{64 * kK, -1, 1, 0}, {0, 0, 1, 64 * kK}, {64 * kK, -1, 1, 0}}},
      {"and a request up to a quarter smaller, given back with its own size",
       {{400 * kK, -1, 1, 0}, {0, 0, 1, 400 * kK}, {320 * kK, -1, 1, 0}, {0, 1, 1, 400 * kK}}},
      {"not a much smaller one", {{400 * kK, -1, 1, 0}, {0, 0, 1, 400 * kK}, {200 * kK, -1, 2, 400 * kK}}},
      {"nor a larger one", {{64 * kK, -1, 1, 0}, {0, 0, 1, 64 * kK}, {128 * kK, -1, 2, 64 * kK}}},
      {"the smallest that fits",
       {{500 * kK, -1, 1, 0},
        {420 * kK, -1, 2, 0},
        {0, 0, 2, 500 * kK},
        {0, 1, 2, 920 * kK},
        {400 * kK, -1, 2, 500 * kK}}},
      {"over the bytes bound the oldest go first",
       {{600 * kK, -1, 1, 0},
        {300 * kK, -1, 2, 0},
        {400 * kK, -1, 3, 0},
        {0, 0, 3, 600 * kK},
        {0, 1, 3, 900 * kK},
        {0, 2, 3, 700 * kK},
        {600 * kK, -1, 4, 700 * kK}}},
      {"a block over the bound is not kept", {{1100 * kK, -1, 1, 0}, {0, 0, 1, 0}}},
      {"over the count bound the oldest go first",
       {{10 * kK, -1, 1, 0},
        {20 * kK, -1, 2, 0},
        {30 * kK, -1, 3, 0},
        {40 * kK, -1, 4, 0},
        {0, 0, 4, 10 * kK},
        {0, 1, 4, 30 * kK},
        {0, 2, 4, 60 * kK},
        {0, 3, 4, 90 * kK},
        {10 * kK, -1, 5, 90 * kK}}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.rule);
    g_allocations = 0;
    {
      LargeBlockCache cache({&FakeAllocate, &FakeRelease}, 1000 * kK, 3);
      std::vector<std::pair<void*, size_t>> taken;
      for (const Step& step : c.steps) {
        if (step.give < 0) {
          taken.emplace_back(cache.Take(step.take), step.take);
        } else {
          cache.Give(taken[static_cast<size_t>(step.give)].first, taken[static_cast<size_t>(step.give)].second);
          taken[static_cast<size_t>(step.give)].first = nullptr;
        }
        EXPECT_EQ(g_allocations, step.allocations);
        EXPECT_EQ(cache.KeptBytes(), step.keptBytes);
        EXPECT_LE(cache.KeptBlocks(), 3u);
      }
      for (const auto& [block, bytes] : taken) cache.Give(block, bytes);
    }
    EXPECT_TRUE(g_live.empty());  // all released when the cache goes
  }
}

TEST(LargeBlockCache, AfterClosingEveryBlockGoesBackAtOnce) {
  LargeBlockCache cache({&FakeAllocate, &FakeRelease}, 1000 * kK, 3);
  void* kept = cache.Take(64 * kK);
  void* held = cache.Take(64 * kK);
  cache.Give(kept, 64 * kK);
  cache.Close();
  EXPECT_EQ(g_live.size(), 1u);
  cache.Give(held, 64 * kK);
  EXPECT_TRUE(g_live.empty());
  EXPECT_EQ(cache.KeptBlocks(), 0u);
}

}  // namespace
}  // namespace qm
