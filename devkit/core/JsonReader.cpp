#include "devkit/core/Json.h"

#include <QTextCodec>

#include <cctype>
#include <cstring>

namespace
{

bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

/// Reads one text from front to back. The first error ends it; every function then returns at once.
class Reader
{
public:
    explicit Reader(const QByteArray& text) : m_at(text.constData()), m_begin(m_at), m_end(m_at + text.size()) {}

    Json::Parsed Read()
    {
        QVariant value = ReadValue(0);
        SkipBlanks();
        if (Good() && m_at != m_end)
            Fail("unexpected text after the value");
        return {Good() ? value : QVariant(), m_error};
    }

private:
    QVariant ReadValue(int depth);
    QVariant ReadObject(int depth);
    QVariant ReadArray(int depth);
    QString ReadText();
    void ReadEscape(QString& text);
    ushort ReadCodeUnit();
    QVariant ReadNumber();
    QVariant ToInteger(const QByteArray& literal);
    QVariant ToDouble(const QByteArray& literal);
    bool TakeDigits();
    void RequireDigits();
    QVariant ReadWord(const char* word, const QVariant& value);

    bool Good() const { return m_error.isEmpty(); }
    bool At(char c) const { return m_at != m_end && *m_at == c; }
    bool Take(char c);
    void Expect(char c, const char* what);
    void SkipBlanks();
    void Fail(const char* what);

    const char* m_at;
    const char* const m_begin;
    const char* const m_end;
    const QTextCodec* const m_utf8 = QTextCodec::codecForName("UTF-8");
    QString m_error;
};

QVariant Reader::ReadValue(int depth)
{
    SkipBlanks();
    if (depth > Json::MaximumDepth)
        Fail("nested too deeply");
    if (!Good() || m_at == m_end)
    {
        Fail("a value is missing");
        return {};
    }
    switch (*m_at)
    {
    case '{':
        return ReadObject(depth);
    case '[':
        return ReadArray(depth);
    case '"':
        return ReadText();
    case 't':
        return ReadWord("true", true);
    case 'f':
        return ReadWord("false", false);
    case 'n':
        return ReadWord("null", {});
    default:
        return ReadNumber();
    }
}

QVariant Reader::ReadObject(int depth)
{
    QVariantMap object;
    Take('{');
    SkipBlanks();
    if (Take('}'))
        return object;
    do
    {
        SkipBlanks();
        if (!At('"'))
        {
            Fail("a member's name in quotes is missing");
            return {};
        }
        const QString name = ReadText();
        SkipBlanks();
        Expect(':', "a colon is missing");
        const QVariant value = ReadValue(depth + 1);
        if (!Good())
            return {};
        object.insert(name, value);
        SkipBlanks();
    } while (Take(','));
    Expect('}', "an object is not closed");
    return object;
}

QVariant Reader::ReadArray(int depth)
{
    QVariantList array;
    Take('[');
    SkipBlanks();
    if (Take(']'))
        return array;
    do
    {
        array.append(ReadValue(depth + 1));
        if (!Good())
            return {};
        SkipBlanks();
    } while (Take(','));
    Expect(']', "an array is not closed");
    return array;
}

QString Reader::ReadText()
{
    QString text;
    Take('"');
    while (Good())
    {
        const char* const start = m_at;
        while (m_at != m_end && *m_at != '"' && *m_at != '\\' && static_cast<uchar>(*m_at) >= 0x20)
            ++m_at;
        if (m_at != start)
        {
            QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
            text += m_utf8->toUnicode(start, static_cast<int>(m_at - start), &state);
            if (state.invalidChars > 0 || state.remainingChars > 0)
                Fail("a text is not UTF-8");
        }
        if (Take('"'))
            return text;
        if (Take('\\'))
        {
            ReadEscape(text);
            continue;
        }
        Fail(m_at == m_end ? "a text is not closed" : "a control character stands in a text");
    }
    return {};
}

void Reader::ReadEscape(QString& text)
{
    static constexpr char Letters[] = "\"\\/bfnrt";
    static constexpr char Meanings[] = "\"\\/\b\f\n\r\t";
    if (Take('u'))
    {
        text += QChar(ReadCodeUnit());
        return;
    }
    const char* const letter = m_at == m_end || *m_at == '\0' ? nullptr : std::strchr(Letters, *m_at);
    if (letter == nullptr)
    {
        Fail("an escape is unknown");
        return;
    }
    text += QLatin1Char(Meanings[letter - Letters]);
    ++m_at;
}

ushort Reader::ReadCodeUnit()
{
    bool valid = m_end - m_at >= 4;
    const QByteArray digits(m_at, valid ? 4 : 0);
    for (const char digit : digits)
        valid = valid && std::isxdigit(static_cast<uchar>(digit)) != 0;
    if (!valid)
    {
        Fail("four hexadecimal digits are missing");
        return 0;
    }
    m_at += 4;
    return digits.toUShort(nullptr, 16);
}

QVariant Reader::ReadNumber()
{
    const char* const start = m_at;
    Take('-');
    if (Take('0') ? m_at != m_end && IsDigit(*m_at) : !TakeDigits())
    {
        m_at = start;
        Fail("not a JSON value");
        return {};
    }
    bool integer = true;
    if (Take('.'))
    {
        integer = false;
        RequireDigits();
    }
    if (Take('e') || Take('E'))
    {
        integer = false;
        if (!Take('+'))
            Take('-');
        RequireDigits();
    }
    const QByteArray literal(start, static_cast<int>(m_at - start));
    return integer ? ToInteger(literal) : ToDouble(literal);
}

QVariant Reader::ToInteger(const QByteArray& literal)
{
    bool fits = false;
    if (const int number = literal.toInt(&fits); fits)
        return number;
    if (const qlonglong number = literal.toLongLong(&fits); fits)
        return number;
    if (const qulonglong number = literal.toULongLong(&fits); fits)
        return number;
    return ToDouble(literal);
}

QVariant Reader::ToDouble(const QByteArray& literal)
{
    bool fits = false;
    const double number = literal.toDouble(&fits);
    if (!fits)
        Fail("a number is out of range");
    return number;
}

bool Reader::TakeDigits()
{
    const char* const start = m_at;
    while (m_at != m_end && IsDigit(*m_at))
        ++m_at;
    return m_at != start;
}

void Reader::RequireDigits()
{
    if (!TakeDigits())
        Fail("digits are missing");
}

QVariant Reader::ReadWord(const char* word, const QVariant& value)
{
    const auto length = static_cast<std::ptrdiff_t>(std::strlen(word));
    if (m_end - m_at < length || std::strncmp(m_at, word, static_cast<std::size_t>(length)) != 0)
    {
        Fail("not a JSON value");
        return {};
    }
    m_at += length;
    return value;
}

bool Reader::Take(char c)
{
    const bool there = At(c);
    m_at += there ? 1 : 0;
    return there;
}

void Reader::Expect(char c, const char* what)
{
    if (!Take(c))
        Fail(what);
}

void Reader::SkipBlanks()
{
    while (m_at != m_end && (*m_at == ' ' || *m_at == '\t' || *m_at == '\r' || *m_at == '\n'))
        ++m_at;
}

void Reader::Fail(const char* what)
{
    if (Good())
        m_error = QStringLiteral("%1 at byte %2").arg(QLatin1String(what)).arg(m_at - m_begin + 1);
}

} // namespace

Json::Parsed Json::Parse(const QByteArray& text)
{
    return Reader(text).Read();
}
