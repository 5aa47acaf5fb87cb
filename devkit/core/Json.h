#pragma once

#include <QByteArray>
#include <QString>
#include <QVariant>

/// JSON text to values and back, exact for 64-bit integers, which Qt's own reader and writer round to doubles.
///
/// Objects are QVariantMap, arrays QVariantList, strings QString. An integer literal becomes int where it fits, else
/// qlonglong or qulonglong; a literal with a fraction or an exponent, or beyond 64 bits, becomes double. Null is an
/// invalid QVariant.
namespace Json
{

/// Containers inside containers; deeper text is refused.
constexpr int kMaximumDepth = 512;
/// Longer text is not written.
constexpr qint64 kLongestString = 256LL * 1024 * 1024;

struct Parsed
{
    QVariant value;
    QString error; // empty on success; else what is wrong, with line and column
};

/// One JSON value in UTF-8, strictly as the standard has it: no trailing text, comments, lone surrogates or bare
/// control characters. The last of several members of one name counts.
Parsed Parse(const QByteArray& text);

/// Compact UTF-8 text on one line, with DEL and the C1 control characters as escapes. What JSON does not know is
/// written as the string that QVariant has for it, else null; a lone surrogate as "?". Empty: the text would be
/// longer than kLongestString.
QByteArray Write(const QVariant& value);

} // namespace Json
