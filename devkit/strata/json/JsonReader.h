#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace Strata
{

/// Reads JSON text as its caller's grammar asks for it, in one pass and without recursion of its own. Strict: integers
/// of 64 bits are the only numbers, names and strings are well-formed UTF-8 without U+0000, nothing follows the value.
/// The first failure sticks; every later call answers false.
class JsonReader
{
public:
    /// `text` must outlive the reader.
    explicit JsonReader(std::string_view text);

    enum class Kind
    {
        Object,
        Array,
        String,
        Integer,
        Boolean,
        Null,
        Other ///< the end, or nothing that JSON knows
    };
    /// What the next value is by its first character.
    Kind Peek();

    /// Calls `member(name)` for each member, which reads the member's value and answers whether it could.
    template <class Member>
    bool Object(Member&& member)
    {
        std::string name;
        return Sequence(
            '{', '}', [&] { return String(name) && Punctuation(':', "':' after the member's name") && member(name); });
    }

    /// Calls `element()` for each element, which reads it and answers whether it could.
    template <class Element>
    bool Array(Element&& element)
    {
        return Sequence('[', ']', element);
    }

    bool String(std::string& value);
    bool Integer(int64_t& value);
    bool Boolean(bool& value);
    bool Null();
    /// The text of an object or an array, for someone else to read: its brackets match, more is not known of it.
    bool Raw(std::string_view& value);

    /// Whether the whole text was one value, with nothing behind it.
    bool AtEnd();

    /// Makes the reader fail here because of what was read; answers false.
    bool Fail(const std::string& reason);

    /// Why and where reading failed, as in "line 3, column 7: expected an integer"; empty if it did not.
    const std::string& Error() const { return m_error; }

private:
    template <class Item>
    bool Sequence(char open, char close, Item&& item)
    {
        if (!Punctuation(open, open == '{' ? "an object" : "an array"))
            return false;
        if (AcceptNext(close))
            return true;
        do
        {
            if (!item())
                return Fail("expected another value");
        } while (AcceptNext(','));
        return Punctuation(close, close == '}' ? "',' or '}'" : "',' or ']'");
    }

    void SkipSpace();
    bool Accept(char character);
    bool AcceptNext(char character);
    bool Punctuation(char character, const char* expected);
    bool Word(std::string_view word);
    bool Escape(std::string& value);
    bool HexUnit(char32_t& unit);
    bool Expected(const char* what);

    std::string_view m_text;
    std::size_t m_at = 0;
    std::string m_error;
};

} // namespace Strata
