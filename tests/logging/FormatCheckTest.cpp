#include "logging/FunctionLog.h"
#include "tests/support/LogCapture.h"

#include <gmock/gmock.h>

#include <cstdint>
#include <string>

namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

template <class... Arguments>
constexpr bool Builds(const wchar_t* format)
{
    return NlOrbLogging::FormatCheck::Matches(format, NlOrbLogging::FormatCheck::Types<Arguments...>());
}

enum Plain
{
};
enum class Scoped
{
};

TEST(FormatCheck, TakesArgumentsOfTheRightType)
{
    static_assert(Builds<>(L"%s: "));
    static_assert(Builds<>(L"%s: 100%% done"));
    static_assert(Builds<int, unsigned, bool, short, Plain>(L"%s: %d %u %d %+02d %x"));
    static_assert(Builds<std::uint32_t, std::int64_t, unsigned long long>(L"%s: %lu %I64d %llu"));
    static_assert(Builds<std::size_t>(L"%s: %Iu"));
    static_assert(Builds<const wchar_t*, wchar_t*, const char*, char*, const char*>(L"%s: %s '%ls' %hs %S %-5.3hs"));
    static_assert(Builds<void*, const Plain*, const char*>(L"%s: %p %p %p"));
}

TEST(FormatCheck, RefusesWhatWouldBeMisread)
{
    static_assert(!Builds<>(L"no name"));
    static_assert(!Builds<>(L"%d: a name is text"));
    static_assert(!Builds<>(L"%s: %d"), "an argument is missing");
    static_assert(!Builds<int>(L"%s: "), "an argument is left over");
    static_assert(!Builds<int>(L"%s: %"), "a conversion is cut off");
    static_assert(!Builds<std::int64_t>(L"%s: %d"));
    static_assert(!Builds<int>(L"%s: %I64d"));
    static_assert(!Builds<std::uint64_t>(L"%s: %lu"), "a long has 32 bits");
    static_assert(!Builds<const char*>(L"%s: %s"));
    static_assert(!Builds<const wchar_t*>(L"%s: %hs"));
    static_assert(!Builds<std::wstring>(L"%s: %s"));
    static_assert(!Builds<Scoped>(L"%s: %d"));
    static_assert(!Builds<int>(L"%s: %p"));
    static_assert(!Builds<double>(L"%s: %f"), "no message has a use for it");
    static_assert(!Builds<int*>(L"%s: %n"));
    static_assert(!Builds<int, int>(L"%s: %*d"));
    static_assert(!Builds<int>(L"%s: %#x"));
    static_assert(!Builds<int>(L"%s: %d %y"));
    static_assert(!Builds<const wchar_t*>(L"%s: %05s"));
}

TEST(FunctionLog, BeginsEachLineWithTheName)
{
    const EntryLog log(L"A::B");
    LOG(log, 2, L"%s: error %d of '%hs'", 5, "key");
    LOG(MethodLog(L"Property<bool>", L"Load"), 3, L"%s: done");

    EXPECT_THAT(LogCapture::Take(), ElementsAre(LogLine{5, "A::B: "}, LogLine{2, "A::B: error 5 of 'key'"},
                                                LogLine{3, "Property<bool>::Load: done"}));
}

TEST(FunctionLog, EvaluatesNameAndArgumentsOfWrittenLinesOnlyAndKeepsTheLastError)
{
    int evaluated = 0;
    const auto evaluate = [&] {
        Platform::SetLastError(34);
        return ++evaluated;
    };
    const auto name = [&] { return MethodLog(evaluate() > 0 ? L"A" : L"", L"B"); };
    LogCapture::SetThreshold(4);
    Platform::SetLastError(2);

    LOG(name(), 5, L"%s: %d", evaluate());
    EXPECT_EQ(evaluated, 0);
    EXPECT_THAT(LogCapture::Take(), IsEmpty());

    LOG(name(), 4, L"%s: %d", evaluate());
    EXPECT_EQ(evaluated, 2);
    EXPECT_EQ(Platform::LastError(), 2U);
}

} // namespace
