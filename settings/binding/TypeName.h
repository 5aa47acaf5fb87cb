#pragma once

#include "settings/binding/StoreTypes.h"

#include <string>

namespace StrataSettings
{

/// How log names spell a type. An element class of a set and a tree specialise it beside their own declarations.
template <class T>
inline constexpr const wchar_t* kTypeName = nullptr;

template <>
inline constexpr const wchar_t* kTypeName<bool> = L"bool";
template <>
inline constexpr const wchar_t* kTypeName<int> = L"int";
template <>
inline constexpr const wchar_t* kTypeName<std::int64_t> = L"__int64";
template <>
inline constexpr const wchar_t* kTypeName<std::string> = L"std::string";
template <>
inline constexpr const wchar_t* kTypeName<std::wstring> = L"std::wstring";
template <>
inline constexpr const wchar_t* kTypeName<Minutes> = L"std::chrono::duration<int,std::ratio<60>>";
template <>
inline constexpr const wchar_t* kTypeName<Seconds> = L"std::chrono::duration<__int64>";
template <>
inline constexpr const wchar_t* kTypeName<TimePoint> = L"std::chrono::system_clock::time_point";

} // namespace StrataSettings
