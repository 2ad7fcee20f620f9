#include "generate_orders.h"

#include <cstdio>
#include <stdexcept>

namespace qm::bench {

namespace {

// splitmix64: each record is generated from its own index, so any range of
// records can be produced on its own.
uint64_t Mix(uint64_t x) {
  x += 0x9E3779B97F4A7C15ull;
  x = (x ^ (x >> 30)) * 0xBF58476D1CE4E5B9ull;
  x = (x ^ (x >> 27)) * 0x94D049BB133111EBull;
  return x ^ (x >> 31);
}

const char* const kCustomers[] = {
    "Anna Schmidt", "Jürgen Müller", "Zoë Ångström",    "Olivia Brown", "Łukasz Nowak",   "María García",
    "Peter Jones",  "山田太郎",      "François Dupont", "Chen Wei",     "Sarah O'Connor", "Björn Larsen",
    "apple Store",  "Apple Store",   "Äpfel GmbH",      "Zebra Corp",
};
const char* const kCities[] = {"Berlin", "München", "Paris",     "London", "New York",
                               "Kraków", "Tokyo",   "São Paulo", "Oslo",   "Madrid"};
const char* const kProducts[] = {"Widget A",    "Widget B", "Gadget Pro", "Cable 2m",     "Adapter USB-C",
                                 "Screen 24in", "Keyboard", "Mouse",      "Dock Station", "Headset"};
const char* const kStatus[] = {"paid", "open", "shipped", "cancelled"};
const char* const kNotes[] = {
    "",
    "",
    "",
    "call before delivery",
    "gift wrap",
    "\"Ring twice; ask for \"\"Bob\"\"\"",
    "\"leave at door; back yard\"",
    "urgent",
};

template <size_t N>
const char* Pick(const char* const (&list)[N], uint64_t r) {
  return list[r % N];
}

void AppendNumber(std::string& out, uint64_t value, int minDigits = 1) {
  char digits[24];
  int n = 0;
  do {
    digits[n++] = static_cast<char>('0' + value % 10);
    value /= 10;
  } while (value);
  for (int k = n; k < minDigits; ++k) out.push_back('0');
  while (n) out.push_back(digits[--n]);
}

void AppendMoney(std::string& out, uint64_t cents) {
  AppendNumber(out, cents / 100);
  out.push_back('.');
  AppendNumber(out, cents % 100, 2);
}

}  // namespace

void AppendOrders(uint64_t first, size_t count, std::string& out) {
  if (first == 0) {
    out += "OrderId;OrderDate;Customer;City;Product;Quantity;UnitPrice;Total;Status;Note\r\n";
  }
  for (uint64_t i = first; i < first + count; ++i) {
    const uint64_t r = Mix(i);
    const uint64_t s = Mix(r);
    out += "ORD-";
    AppendNumber(out, 10000000 + i, 8);
    out.push_back(';');
    out += "2023-";
    AppendNumber(out, 1 + r % 12, 2);
    out.push_back('-');
    AppendNumber(out, 1 + (r >> 8) % 28, 2);
    out.push_back(';');
    out += Pick(kCustomers, r >> 16);
    out.push_back(';');
    out += Pick(kCities, r >> 24);
    out.push_back(';');
    out += Pick(kProducts, r >> 32);
    out.push_back(';');
    const uint64_t quantity = 1 + (r >> 40) % 99;
    AppendNumber(out, quantity);
    out.push_back(';');
    const uint64_t price = 99 + s % 49900;
    AppendMoney(out, price);
    out.push_back(';');
    AppendMoney(out, price * quantity);
    out.push_back(';');
    out += Pick(kStatus, s >> 20);
    out.push_back(';');
    out += Pick(kNotes, s >> 28);
    out += "\r\n";
  }
}

uint64_t WriteOrdersFile(const std::string& path, uint64_t records) {
  std::FILE* file = std::fopen(path.c_str(), "wb");
  if (!file) throw std::runtime_error("cannot create " + path);
  std::string block;
  uint64_t total = 0;
  constexpr uint64_t kBlock = 20000;
  for (uint64_t first = 0; first < records; first += kBlock) {
    block.clear();
    AppendOrders(first, static_cast<size_t>(records - first < kBlock ? records - first : kBlock), block);
    if (std::fwrite(block.data(), 1, block.size(), file) != block.size()) {
      std::fclose(file);
      throw std::runtime_error("cannot write " + path);
    }
    total += block.size();
  }
  if (records == 0) {
    block.clear();
    AppendOrders(0, 0, block);
    std::fwrite(block.data(), 1, block.size(), file);
    total += block.size();
  }
  if (std::fclose(file) != 0) throw std::runtime_error("cannot write " + path);
  return total;
}

}  // namespace qm::bench
