#include "generator/program_names.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

namespace ptick::bench {

namespace {

constexpr std::array<std::string_view, 16> kStems = {
    "ORDER.ENTRY",  "STOCK.COUNT", "POST.INVOICE",  "CUST.LOOKUP", "PRICE.LINES",  "NIGHT.BATCH",
    "PRINT.ORDERS", "ALLOC.STOCK", "GL.JOURNAL",    "CALC.TAX",    "CASH.RECEIPT", "AGED.DEBT",
    "PURCH.ORDER",  "DATE.WINDOW", "SHIP.MANIFEST", "LOG.EVENT",
};

}  // namespace

std::vector<std::string> ProgramNames(std::uint32_t count) {
  constexpr std::size_t kMinDigits = 3;
  std::vector<std::string> names;
  names.reserve(count);
  for (std::size_t i = 0; i < count; ++i) {
    const std::string number = std::to_string(i / kStems.size() + 1);
    names.emplace_back(kStems.at(i % kStems.size()));
    names.back().append(".").append(kMinDigits - std::min(kMinDigits, number.size()), '0');
    names.back() += number;
  }
  return names;
}

}  // namespace ptick::bench
