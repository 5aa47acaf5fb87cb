#pragma once

/// The addresses of web services that the maker of a suite supplies. Reserved example names stand for them here.
namespace Addresses
{

inline constexpr const char* kSampleSubmit = "https://www.example.com/submit-sample";
inline constexpr const char* kChromeWebStore = "https://store.example.com/extensions/browsing-protection?";
inline constexpr const char* kFragfinnHost = "fragfinn.example.com";

} // namespace Addresses
