#include "vem/value.h"

#include <cmath>
#include <limits>
#include <string>

#include <gtest/gtest.h>

namespace {

// What a call throws, or "" if it throws nothing.
template <class Call>
std::string Thrown(Call call) {
  try {
    call();
  } catch (const vem::bad_value_access& error) {
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

}  // namespace
