#pragma once

#include <string>

/// What a label of a host has to keep to be looked up.
namespace LabelRules
{

/// The characters and their order, by UTS #46, section 4.1, and the rules of RFC 5892 on joiners.
bool IsValid(const std::u32string& label);

/// RFC 5893: a host with a label that is written from right to left holds only labels that keep the rule.
bool IsRightToLeft(const std::u32string& label);
bool KeepsBidiRule(const std::u32string& label);

} // namespace LabelRules
