#include "values/errors.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cstddef>
#include <set>
#include <string>
#include <system_error>
#include <type_traits>
#include <utility>
#include <vector>

namespace TALO::Wifi {

namespace {

using talo::dbus::DbusError;

template <typename Derived, typename Base>
constexpr bool isKindOf = std::is_base_of_v<Base, Derived>&& std::is_convertible_v<Derived*, Base*>;

static_assert(isKindOf<DbusError, std::system_error>);
static_assert(isKindOf<WifiException, DbusError>);
static_assert(isKindOf<RuntimeError, WifiException>);
static_assert(!isKindOf<DbusError, WifiException> && !isKindOf<WifiException, RuntimeError>);
static_assert(isKindOf<ErrorCategory, std::error_category>);

/// Every code with its number. The numbers are shared with whoever compiled against the library before.
const std::vector<std::pair<ErrorCode, int>>& Codes() {
  static const std::vector<std::pair<ErrorCode, int>> codes = {
      {ErrorCode::RuntimeError, 2},
      {ErrorCode::InvalidArgument, 10},
      {ErrorCode::NotFound, 11},
      {ErrorCode::AlreadyExists, 12},
      {ErrorCode::NotSupported, 13},
      {ErrorCode::NotAllowed, 14},
      {ErrorCode::Busy, 15},
      {ErrorCode::LimitReached, 16},
      {ErrorCode::RadioFailed, 17},
      {ErrorCode::StorageFailed, 18},
      {ErrorCode::BusUnavailable, 30},
      {ErrorCode::DaemonNotRunning, 31},
      {ErrorCode::DaemonNotStarted, 32},
      {ErrorCode::AccessDenied, 33},
      {ErrorCode::DaemonGone, 34},
      {ErrorCode::NoAnswer, 35},
      {ErrorCode::BadReply, 36},
      {ErrorCode::UnknownOperation, 37},
      {ErrorCode::Unexpected, 38},
  };
  return codes;
}

TEST(ErrorCategory, IsTheOneOfThisLibrary) {
  EXPECT_STREQ(ErrorCategory::get().name(), "talowifi");
  EXPECT_EQ(&ErrorCategory::get(), &ErrorCategory::get());
}

TEST(ErrorCategory, HasATextOfItsOwnForEveryCode) {
  std::set<std::string> texts = {"", ErrorCategory::get().message(0)};
  for (const auto& [code, number] : Codes()) {
    const std::string text = ErrorCategory::get().message(number);
    EXPECT_TRUE(texts.insert(text).second) << number << " is \"" << text << "\"";
  }
}

TEST(ErrorCategory, SaysThatANumberWithoutMeaningIsUnknown) {
  for (const int number : {-1, 0, 1, 3, 9, 19, 29, 39, 1000000}) {
    EXPECT_EQ(ErrorCategory::get().message(number), "Unknown error") << number;
  }
}

TEST(ErrorCode, KeepsItsNumberAndMakesAnErrorCodeOfTheLibrary) {
  for (const auto& [code, number] : Codes()) {
    const std::error_code made = code;
    EXPECT_EQ(made.value(), number);
    EXPECT_EQ(made.category(), ErrorCategory::get());
  }
}

TEST(DbusError, IsWordedAsASystemErrorIs) {
  const DbusError error(ErrorCode::NoAnswer, "GetNetworks");
  EXPECT_STREQ(error.what(), "GetNetworks: No answer");
  EXPECT_EQ(error.code(), make_error_code(ErrorCode::NoAnswer));
}

TEST(WifiException, IsWordedAsASystemErrorIs) {
  const WifiException error(ErrorCode::NotFound, "Network 7");
  EXPECT_STREQ(error.what(), "Network 7: Not found");
  EXPECT_EQ(error.code(), make_error_code(ErrorCode::NotFound));
}

TEST(WifiException, CanBeCaughtAsEveryKindThatItIs) {
  EXPECT_THROW(throw WifiException(ErrorCode::Busy, "x"), DbusError);
  EXPECT_THROW(throw WifiException(ErrorCode::Busy, "x"), std::system_error);
  EXPECT_THROW(throw RuntimeError("x"), WifiException);
  EXPECT_THROW(throw RuntimeError("x"), DbusError);
  EXPECT_THROW(throw RuntimeError("x"), std::system_error);
}

TEST(RuntimeError, HasTheCodeTwoOfTheLibrary) {
  const RuntimeError error("anything");
  EXPECT_EQ(error.code().value(), 2);
  EXPECT_EQ(&error.code().category(), &ErrorCategory::get());
}

TEST(RuntimeError, FormatsATextAndANumber) {
  const RuntimeError error("Failed to Convert enum class [%s] to string: %d", "Colour", -7);
  EXPECT_STREQ(error.what(), "Failed to Convert enum class [Colour] to string: -7: Runtime error");
}

TEST(RuntimeError, FormatsTwoTexts) {
  const RuntimeError error("Failed to convert string to enum class [%s]: %s", "Colour", "blue");
  EXPECT_STREQ(error.what(), "Failed to convert string to enum class [Colour]: blue: Runtime error");
}

TEST(RuntimeError, FormatsATextAndAnUnsignedShortNumber) {
  const RuntimeError error("[%s] to string: %d", "Colour", static_cast<unsigned short>(65535));
  EXPECT_STREQ(error.what(), "[Colour] to string: 65535: Runtime error");
}

TEST(RuntimeError, FormatsLikePrintf) {
  EXPECT_STREQ(RuntimeError("100%% of %05.1f|%-4d|%x", 2.25, 3, 255U).what(),
               "100% of 002.2|3   |ff: Runtime error");
}

TEST(RuntimeError, TakesAFormatWithoutArguments) {
  EXPECT_STREQ(RuntimeError("Nothing to add").what(), "Nothing to add: Runtime error");
  EXPECT_STREQ(RuntimeError("").what(), ": Runtime error");
}

TEST(RuntimeError, KeepsALongMessageWhole) {
  for (const std::size_t length : {1U, 15U, 16U, 255U, 256U, 4095U, 4096U, 1000000U}) {
    const std::string text(length, 'm');
    EXPECT_EQ(RuntimeError("%s", text.c_str()).what(), text + ": Runtime error");
  }
}

TEST(RuntimeError, SaysSoWhenTheFormatCannotBeFormatted) {
  // No wide character beyond ASCII has a form in this locale.
  ASSERT_STREQ(std::setlocale(LC_ALL, nullptr), "C");
  const RuntimeError error("%ls", L"\u263A");
  EXPECT_STREQ(error.what(), "Error but failed to format string: Runtime error");
  EXPECT_EQ(error.code().value(), 2);
  EXPECT_EQ(&error.code().category(), &ErrorCategory::get());
}

TEST(RuntimeError, KeepsItsMessageWhenCopied) {
  const RuntimeError error("%s", "first");
  const RuntimeError copy = error;  // NOLINT(performance-unnecessary-copy-initialization): what is tested
  EXPECT_STREQ(copy.what(), "first: Runtime error");
  EXPECT_EQ(copy.code(), error.code());
}

}  // namespace

}  // namespace TALO::Wifi
