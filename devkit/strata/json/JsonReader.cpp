#include "devkit/strata/json/JsonReader.h"

#include "devkit/strata/json/Utf8.h"

#include <algorithm>
#include <charconv>

namespace Strata
{

JsonReader::JsonReader(std::string_view text) : m_text(text)
{
    if (!IsUtf8(text))
        m_error = "the text is not UTF-8";
}

JsonReader::Kind JsonReader::Peek()
{
    SkipSpace();
    switch (m_error.empty() && m_at < m_text.size() ? m_text[m_at] : '\0')
    {
    case '{':
        return Kind::Object;
    case '[':
        return Kind::Array;
    case '"':
        return Kind::String;
    case 't':
    case 'f':
        return Kind::Boolean;
    case 'n':
        return Kind::Null;
    case '-':
    case '0':
    case '1':
    case '2':
    case '3':
    case '4':
    case '5':
    case '6':
    case '7':
    case '8':
    case '9':
        return Kind::Integer;
    default:
        return Kind::Other;
    }
}

bool JsonReader::String(std::string& value)
{
    if (!Punctuation('"', "a string"))
        return false;
    value.clear();
    while (m_at < m_text.size())
    {
        const auto plain = std::find_if(m_text.begin() + static_cast<std::ptrdiff_t>(m_at), m_text.end(), [](char c) {
            return c == '"' || c == '\\' || static_cast<unsigned char>(c) < 0x20;
        });
        const auto end = static_cast<std::size_t>(plain - m_text.begin());
        value.append(m_text, m_at, end - m_at);
        m_at = end;
        if (Accept('"'))
            return true;
        if (!Accept('\\'))
            return Fail("a string does not end, or holds a control character");
        if (!Escape(value))
            return Fail("unknown or ill-formed escape");
    }
    return Fail("a string does not end");
}

bool JsonReader::Escape(std::string& value)
{
    static constexpr std::string_view Letters = "\"\\/bfnrt";
    static constexpr std::string_view Meanings = "\"\\/\b\f\n\r\t";
    if (m_at >= m_text.size())
        return false;
    const char letter = m_text[m_at++];
    if (const auto at = Letters.find(letter); at != std::string_view::npos)
    {
        value += Meanings[at];
        return true;
    }
    char32_t code = 0;
    if (letter != 'u' || !HexUnit(code))
        return false;
    if (code >= 0xD800 && code < 0xDC00)
    {
        char32_t low = 0;
        if (m_text.substr(m_at, 2) != "\\u")
            return false;
        m_at += 2;
        if (!HexUnit(low) || low < 0xDC00 || low > 0xDFFF)
            return false;
        code = 0x10000 + ((code - 0xD800) << 10) + (low - 0xDC00);
    }
    return code != 0 && AppendUtf8(value, code);
}

bool JsonReader::HexUnit(char32_t& unit)
{
    constexpr std::size_t Digits = 4;
    if (m_text.size() - m_at < Digits)
        return false;
    const char* begin = m_text.data() + m_at;
    uint32_t number = 0;
    const auto [end, error] = std::from_chars(begin, begin + Digits, number, 16);
    if (error != std::errc{} || end != begin + Digits)
        return false;
    unit = number;
    m_at += Digits;
    return true;
}

bool JsonReader::Integer(int64_t& value)
{
    if (Peek() != Kind::Integer)
        return Expected("an integer");
    const char* begin = m_text.data() + m_at;
    const auto [end, error] = std::from_chars(begin, m_text.data() + m_text.size(), value);
    if (error == std::errc::result_out_of_range)
        return Fail("the number does not fit 64 bits");
    const char* digits = begin + (*begin == '-' ? 1 : 0);
    const bool leadingZero = end - digits > 1 && *digits == '0';
    const bool fraction =
        end != m_text.data() + m_text.size() && std::string_view(".eE").find(*end) != std::string_view::npos;
    if (error != std::errc{} || leadingZero || fraction)
        return Expected("an integer");
    m_at += static_cast<std::size_t>(end - begin);
    return true;
}

bool JsonReader::Boolean(bool& value)
{
    SkipSpace();
    value = Word("true");
    return value || Word("false") || Expected("true or false");
}

bool JsonReader::Null()
{
    SkipSpace();
    return Word("null") || Expected("null");
}

bool JsonReader::Raw(std::string_view& value)
{
    if (const Kind kind = Peek(); kind != Kind::Object && kind != Kind::Array)
        return Expected("an object or an array");
    const std::size_t begin = m_at;
    std::size_t depth = 0;
    do
    {
        m_at = m_text.find_first_of("{}[]\"", m_at);
        std::string ignored;
        if (m_at >= m_text.size())
        {
            m_at = m_text.size();
            return Fail("an object or an array does not end");
        }
        if (m_text[m_at] == '"')
        {
            if (!String(ignored))
                return false;
            continue;
        }
        depth = m_text[m_at] == '{' || m_text[m_at] == '[' ? depth + 1 : depth - 1;
        ++m_at;
    } while (depth != 0);
    value = m_text.substr(begin, m_at - begin);
    return true;
}

bool JsonReader::AtEnd()
{
    SkipSpace();
    return m_error.empty() && (m_at == m_text.size() || Fail("there is more after the value"));
}

bool JsonReader::Fail(const std::string& reason)
{
    if (m_error.empty())
    {
        const auto before = m_text.substr(0, m_at);
        const auto line = std::count(before.begin(), before.end(), '\n') + 1;
        const auto lineStart = before.rfind('\n') + 1; // 0 where there is no line end
        m_error = "line " + std::to_string(line) + ", column " + std::to_string(m_at - lineStart + 1) + ": " + reason;
    }
    return false;
}

void JsonReader::SkipSpace()
{
    m_at = std::min(m_text.find_first_not_of(" \t\r\n", m_at), m_text.size());
}

bool JsonReader::Accept(char character)
{
    if (m_error.empty() && m_at < m_text.size() && m_text[m_at] == character)
    {
        ++m_at;
        return true;
    }
    return false;
}

bool JsonReader::AcceptNext(char character)
{
    SkipSpace();
    return Accept(character);
}

bool JsonReader::Punctuation(char character, const char* expected)
{
    return AcceptNext(character) || Expected(expected);
}

bool JsonReader::Word(std::string_view word)
{
    if (!m_error.empty() || m_text.substr(m_at, word.size()) != word)
        return false;
    m_at += word.size();
    return true;
}

bool JsonReader::Expected(const char* what)
{
    return Fail(std::string("expected ") + what);
}

} // namespace Strata
