#include "vem/value.h"

#include <clocale>
#include <cmath>
#include <limits>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

// What a call throws, or "" if it throws nothing.
template <class Error = vem::bad_value_access, class Call>
std::string Thrown(Call call) {
  try {
    call();
  } catch (const Error& error) {
    return error.what();
  }
  return "";
}

TEST(VemValueGet, ReadsIntegersThatFit) {
  EXPECT_EQ(vem::get<int>(VemVar(-7)), -7);
  EXPECT_EQ(vem::get<long>(VemVar(1L << 40)), 1L << 40);
  EXPECT_EQ(vem::get<unsigned char>(VemVar(255)), 255);
  EXPECT_EQ(vem::get<signed char>(VemVar(-128)), -128);
  EXPECT_EQ(vem::get<unsigned long>(VemVar(std::numeric_limits<long>::max())),
            static_cast<unsigned long>(std::numeric_limits<long>::max()));
  EXPECT_EQ(vem::get<long long>(VemVar(std::numeric_limits<long>::min())),
            std::numeric_limits<long>::min());
}

TEST(VemValueGet, ReadsNumbersAsFloatingPoint) {
  EXPECT_EQ(vem::get<double>(VemVar(2.5)), 2.5);
  EXPECT_EQ(vem::get<double>(VemVar(3)), 3.0);
  EXPECT_EQ(vem::get<float>(VemVar(0.1)), 0.1f);
  EXPECT_EQ(vem::get<float>(VemVar((1L << 54) + (1L << 30) + 1)), 18014400656965632.0f);
  EXPECT_EQ(vem::get<long double>(VemVar(2.5)), 2.5L);
  EXPECT_EQ(vem::get<long double>(VemVar(std::numeric_limits<long>::max())),
            9223372036854775807.0L);
  EXPECT_TRUE(std::isnan(vem::get<double>(VemVar(std::nan("")))));
}

TEST(VemValueGet, ReadsTexts) {
  const VemVar value("some text");
  EXPECT_EQ(vem::get<std::string>(value), "some text");
  EXPECT_EQ(vem::get<const char*>(value), value.S());
#if __cplusplus >= 201703L
  EXPECT_EQ(vem::get<std::string_view>(value).data(), value.S());
  EXPECT_EQ(vem::get<std::string_view>(value).size(), 9u);
#endif
}

TEST(VemValueGet, TellsWhatItFound) {
  EXPECT_EQ(Thrown([] { vem::get<unsigned char>(VemVar(256)); }),
            "vem::get: asked for an integer from 0 to 255, the value is the integer 256");
  EXPECT_EQ(Thrown([] { vem::get<signed char>(VemVar(-129)); }),
            "vem::get: asked for an integer from -128 to 127, the value is the integer -129");
  EXPECT_EQ(Thrown([] { vem::get<unsigned long>(VemVar(-1)); }),
            "vem::get: asked for an integer from 0 to 18446744073709551615, the value is the "
            "integer -1");
  EXPECT_EQ(Thrown([] { vem::get<int>(VemVar(2.0)); }),
            "vem::get: asked for an integer from -2147483648 to 2147483647, the value is the "
            "double 2");
  EXPECT_EQ(Thrown([] { vem::get<double>(VemVar("2")); }),
            "vem::get: asked for a number, the value is the text \"2\"");
  EXPECT_EQ(Thrown([] { vem::get<double>(VemVar()); }),
            "vem::get: asked for a number, the value is nothing");
  EXPECT_EQ(Thrown([] { vem::get<std::string>(VemVar(0.1)); }),
            "vem::get: asked for a text, the value is the double 0.1");
  EXPECT_EQ(Thrown([] { vem::get<int>(VemVar(std::string(41, 'a').c_str())); }),
            "vem::get: asked for an integer from -2147483648 to 2147483647, the value is the text "
            "\"" +
                std::string(40, 'a') + "...\"");
  EXPECT_EQ(Thrown([] {
              vem::get<double>(
                  VemVar("a \"b\" \\ \n\t\x1b"
                         "1"));
            }),
            "vem::get: asked for a number, the value is the text \"a \\\"b\\\" \\\\ "
            "\\n\\t\\0331\"");
  EXPECT_EQ(
      Thrown([] { vem::get<double>(VemVar((std::string(39, 'a') + "\xc3\xbc!").c_str())); }),
      "vem::get: asked for a number, the value is the text \"" + std::string(39, 'a') + "...\"");
}

std::string Shown(double number) {
  const std::string told = Thrown([number] { vem::get<int>(VemVar(number)); });
  return told.substr(told.rfind(' ') + 1);
}

TEST(VemValueGet, TellsNumbersByTheirShortestDigits) {
  EXPECT_EQ(Shown(0.1), "0.1");
  EXPECT_EQ(Shown(1.0 / 3), "0.3333333333333333");
  EXPECT_EQ(Shown(std::numeric_limits<double>::min()), "2.2250738585072014e-308");
  EXPECT_EQ(Shown(std::numeric_limits<double>::denorm_min()), "5e-324");
  EXPECT_EQ(Shown(-2 * std::numeric_limits<double>::denorm_min()), "-1e-323");
  EXPECT_EQ(Shown(0.0), "0");
  EXPECT_EQ(Shown(-0.0), "-0");
  EXPECT_EQ(Shown(std::numeric_limits<double>::infinity()), "inf");
}

// Skipped where no locale has a comma.
TEST(VemValueGet, TellsNumbersWithAPointInEveryLocale) {
  const std::string before = std::setlocale(LC_NUMERIC, nullptr);
  for (const char* name : {"VEM_COMMA", "de_DE.UTF-8", "fr_FR.UTF-8"}) {
    if (std::setlocale(LC_NUMERIC, name) != nullptr) break;
  }
  const bool found = *std::localeconv()->decimal_point == ',';
  const std::string shown = Shown(-1.5e-300);
  std::setlocale(LC_NUMERIC, before.c_str());
  if (!found) GTEST_SKIP() << "no locale with a comma";
  EXPECT_EQ(shown, "-1.5e-300");
}

TEST(VemValueGetOr, TakesTheOtherWhereGetWouldThrow) {
  EXPECT_EQ(vem::get_or(VemVar(3), 7), 3);
  EXPECT_EQ(vem::get_or(VemVar("3"), 7), 7);
  EXPECT_EQ(vem::get_or(VemVar(3.5), 7), 7);
  EXPECT_EQ(vem::get_or(VemVar(1L << 40), 7), 7);
  EXPECT_EQ(vem::get_or(VemVar(3), 7.5), 3.0);
  EXPECT_EQ(vem::get_or(VemVar(), 7.5), 7.5);
  EXPECT_EQ(vem::get_or(VemVar("x"), "none"), "x");
  EXPECT_EQ(vem::get_or(VemVar(1), "none"), "none");
  EXPECT_EQ(vem::get_or(VemVar(1), std::string("none")), "none");
  char text[] = "none";
  char* const other = text;
  const VemVar number(1);
  EXPECT_EQ(vem::get_or(number, other), "none");
  EXPECT_EQ(vem::get_or(number, text), "none");
  EXPECT_EQ(vem::get_or(VemVar("x"), other), "x");
}

TEST(VemValueHolds, TellsWhatGetCanRead) {
  EXPECT_TRUE(vem::holds<int>(VemVar(3)));
  EXPECT_FALSE(vem::holds<int>(VemVar(3.0)));
  EXPECT_FALSE(vem::holds<short>(VemVar(40000)));
  EXPECT_TRUE(vem::holds<double>(VemVar(3)));
  EXPECT_FALSE(vem::holds<double>(VemVar("3")));
  EXPECT_TRUE(vem::holds<std::string>(VemVar("")));
  EXPECT_FALSE(vem::holds<std::string>(VemVar()));
}

TEST(VemValueMade, TakesNumbersAndTexts) {
  EXPECT_EQ(vem::get<long>(vem::value(3)), 3);
  EXPECT_EQ(vem::get<long>(vem::value(static_cast<short>(-3))), -3);
  EXPECT_EQ(vem::get<long>(vem::value(3u)), 3);
  EXPECT_EQ(vem::get<long>(vem::value(true)), 1);
  EXPECT_EQ(vem::get<long>(vem::value(VemVarString)), 2);
  EXPECT_EQ(vem::get<long>(vem::value(std::numeric_limits<long>::min())),
            std::numeric_limits<long>::min());
  EXPECT_EQ(vem::value(2.5f).ValType(), VemVarDouble);
  EXPECT_EQ(vem::get<double>(vem::value(2.5L)), 2.5);
  EXPECT_EQ(vem::get<std::string>(vem::value("x")), "x");
  const char letters[] = {'a', 'b'};
  EXPECT_EQ(vem::get<std::string>(vem::value(letters)), "ab");
  EXPECT_EQ(vem::get<std::string>(vem::value(std::string("text"))), "text");
  EXPECT_EQ(vem::get<std::string>(vem::value(std::string())), "");
  EXPECT_EQ(vem::get<long>(vem::value(VemVar(7))), 7);
  EXPECT_EQ(vem::value(vem::none_t()).ValType(), VemVarNone);
#if __cplusplus >= 201703L
  EXPECT_EQ(vem::get<std::string>(vem::value(std::string_view("text", 2))), "te");
  EXPECT_EQ(vem::get<std::string>(vem::value(std::string_view())), "");
#endif
}

TEST(VemValueMade, RefusesWhatItCouldNotHold) {
  const char* const null = nullptr;
  EXPECT_EQ(Thrown<std::out_of_range>([] { vem::value(1UL << 63); }),
            "vem::value: 9223372036854775808 is beyond the integers");
  EXPECT_EQ(Thrown<std::invalid_argument>([] { vem::value(std::string("ab\0c", 4)); }),
            "vem::value: the text has a zero byte at 2");
  EXPECT_EQ(Thrown<std::invalid_argument>([null] { vem::value(null); }),
            "vem::value: the text is a null pointer");
}

enum Unsigned : unsigned long { kUnsignedMax = ~0UL };

TEST(VemValueMade, RefusesNumbersOfEveryTypeByWhatTheyAre) {
  EXPECT_EQ(Thrown<std::out_of_range>([] { vem::value(kUnsignedMax); }),
            "vem::value: 18446744073709551615 is beyond the integers");
#ifndef __STRICT_ANSI__
  __extension__ typedef __int128 wide;
  EXPECT_EQ(Thrown<std::out_of_range>([] { vem::value(-(wide{1} << 64)); }),
            "vem::value: -18446744073709551616 is beyond the integers");
  EXPECT_EQ(vem::get<long>(vem::value(wide{-3})), -3);
  EXPECT_TRUE(vem::get<wide>(VemVar(-3)) == -3);
#endif
}

struct KindOf {
  std::string operator()(long) const { return "long"; }
  std::string operator()(double) const { return "double"; }
  std::string operator()(const char*) const { return "text"; }
  std::string operator()(vem::none_t) const { return "nothing"; }
};

TEST(VemValueVisit, CallsWithWhatTheValueHolds) {
  EXPECT_EQ(vem::visit(KindOf(), VemVar(3)), "long");
  EXPECT_EQ(vem::visit(KindOf(), VemVar(3.0)), "double");
  EXPECT_EQ(vem::visit(KindOf(), VemVar("3")), "text");
  EXPECT_EQ(vem::visit(KindOf(), VemVar()), "nothing");
  const KindOf named;
  EXPECT_EQ(vem::visit(named, VemVar()), "nothing");
}

TEST(VemValueVisit, TakesAVisitorOfSeveral) {
  double sum = 0;
  int texts = 0, nothings = 0;
  const auto visitor = vem::overload([&](double number) { sum += number; },
                                     [&](const char* text) { texts += text[0] == 'a'; },
                                     [&](vem::none_t) { ++nothings; });
  for (const VemVar& value : {VemVar(3), VemVar(0.5), VemVar("a"), VemVar()}) {
    vem::visit(visitor, value);
  }
  EXPECT_EQ(sum, 3.5);
  EXPECT_EQ(texts, 1);
  EXPECT_EQ(nothings, 1);
}

TEST(VemValueLess, OrdersAllValuesStrictly) {
  const double nan = std::nan("");
  const long large = 1L << 53;
  // In order; those of one line are the same.
  const std::vector<std::vector<VemVar>> lines = {
      {VemVar(), VemVar()},
      {VemVar(-std::numeric_limits<double>::infinity())},
      {VemVar(-1e300)},
      {VemVar(std::numeric_limits<long>::min()), VemVar(-9223372036854775808.0)},
      {VemVar(-1.5)},
      {VemVar(-1), VemVar(-1.0)},
      {VemVar(-0.5)},
      {VemVar(0), VemVar(0.0), VemVar(-0.0)},
      {VemVar(2), VemVar(2.0)},
      {VemVar(2.5)},
      {VemVar(large), VemVar(9007199254740992.0)},
      {VemVar(large + 1)},
      {VemVar(9007199254740994.0)},
      {VemVar(std::numeric_limits<long>::max())},
      {VemVar(9223372036854775808.0)},
      {VemVar(std::numeric_limits<double>::infinity())},
      {VemVar(nan), VemVar(-nan)},
      {VemVar("")},
      {VemVar("1")},
      {VemVar("a"), VemVar("a")},
      {VemVar("ab")},
  };
  const vem::less before;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    for (std::size_t j = 0; j < lines.size(); ++j) {
      for (const VemVar& a : lines[i]) {
        for (const VemVar& b : lines[j]) EXPECT_EQ(before(a, b), i < j) << i << ' ' << j;
      }
    }
  }
}

TEST(VemValueLess, SortsAndSearches) {
  std::map<VemVar, int, vem::less> counts;
  for (const VemVar& value : {VemVar("b"), VemVar(2), VemVar("a"), VemVar(2.0), VemVar()}) {
    ++counts[value];
  }
  EXPECT_EQ(counts.size(), 4u);
  EXPECT_EQ(counts[VemVar(2)], 2);
  EXPECT_EQ(counts.begin()->first.ValType(), VemVarNone);
}

}  // namespace
