#pragma once

#include "devkit/faults/FaultInjector.h"

#include <type_traits>

namespace SuiteFaults
{

/// A library whose calls are all alike: for others, see Edge.
struct PlainLibrary
{
    template <class Argument>
    static bool IsExempt(Argument)
    {
        return false;
    }
};

/// What stands at a library's edge before one of its functions: the function itself, unless its call was told to fail.
/// `Library` knows its injector, which calls no fault applies to, and how to make a text that its caller frees:
///     static FaultInjector& Faults();
///     static bool IsExempt(first argument);
///     static void MakeString(char*&), MakeString(wchar_t*&)
template <class Library, std::size_t Number, auto Function>
struct Edge;

template <class Library, std::size_t Number, class Result, class... Arguments, Result (*Function)(Arguments...)>
struct Edge<Library, Number, Function>
{
    /// Whether the result code comes through a parameter, or is what the function answers.
    static constexpr bool kReports = (std::is_same_v<Arguments, uint32_t*> || ...);
    static constexpr bool kAnswersCode =
        !kReports && (std::is_same_v<Result, uint32_t> || std::is_same_v<Result, int32_t>);

    static Result Call(Arguments... arguments)
    {
        if (!Library::Faults().IsIdle() && !IsExempt(arguments...))
        {
            const auto failure = Library::Faults().Enter(Number, KeyOf(arguments...));
            if constexpr (!std::is_void_v<Result>)
                if (failure)
                    return Fail(*failure, arguments...);
        }
        return Function(arguments...);
    }

private:
    static Result Fail(const Failure& failure, Arguments... arguments)
    {
        Result value{};
        if (failure.carriedOut)
            value = Function(arguments...);
        else if constexpr (std::is_same_v<Result, char*> || std::is_same_v<Result, wchar_t*>)
        {
            if (failure.code != 0)
                Library::MakeString(value);
        }
        else
            (TakeDefault(arguments, value), ...);
        (Report(arguments, failure.code), ...);
        if constexpr (kAnswersCode)
            return static_cast<Result>(failure.code);
        else if constexpr (kReports && std::is_same_v<Result, bool>)
            return !value;
        else if constexpr (kReports && std::is_integral_v<Result>)
            return static_cast<Result>(~value);
        else
            return value;
    }

    template <class Argument, class Value>
    static void TakeDefault([[maybe_unused]] Argument argument, [[maybe_unused]] Value& value)
    {
        if constexpr (std::is_same_v<Argument, Value> && std::is_arithmetic_v<Value>)
            value = argument;
    }

    template <class Argument>
    static void Report([[maybe_unused]] Argument argument, [[maybe_unused]] uint32_t code)
    {
        if constexpr (std::is_same_v<Argument, uint32_t*>)
            if (argument)
                *argument = code;
    }

    static bool IsExempt() { return false; }
    template <class First, class... Rest>
    static bool IsExempt(First first, Rest...)
    {
        return Library::IsExempt(first);
    }

    /// The name that follows a handle or an object.
    template <class First, class... Rest>
    static const wchar_t* KeyOf(First, const wchar_t* key, Rest...)
    {
        return std::is_same_v<First, const wchar_t*> ? nullptr : key;
    }
    static const wchar_t* KeyOf(...) { return nullptr; }
};

} // namespace SuiteFaults

// Made from a library's list of functions: their names, their numbers, and what the library exports under those names.
// For the last there have to be the struct `Library`, the functions in the namespace `Api`, and for each of them
// ARGUMENTS_name: the names of its parameters, which no macro can take out of a list of them.
#define SUITE_FAULT_NAME(result, name, parameters) #name,
#define SUITE_FAULT_NUMBER(result, name, parameters) k##name,
#define SUITE_FAULT_EXPORT(result, name, parameters)                                                                   \
    result name parameters                                                                                             \
    {                                                                                                                  \
        return SuiteFaults::Edge<Library, k##name, &Api::name>::Call ARGUMENTS_##name;                                 \
    }
