#pragma once

#include <QByteArray>
#include <QString>
#include <QVariant>

/// JSON text to values and back, exact for 64-bit integers, which Qt's own writer rounds to doubles.
///
/// Objects are QVariantMap, arrays QVariantList, texts QString. An integer literal becomes int where it fits, else
/// qlonglong or qulonglong; a literal with a fraction or an exponent, or beyond 64 bits, becomes double. Null is an
/// invalid QVariant.
namespace Json
{

/// Containers inside containers; deeper text is refused.
constexpr int MaximumDepth = 512;

struct Parsed
{
    QVariant value;
    QString error; // empty on success; else a sentence with the position
};

/// One JSON value in UTF-8, strictly as the standard has it: no trailing text, comments or bare control characters.
/// The last of several members of one name counts.
Parsed Parse(const QByteArray& text);

/// Compact UTF-8 text on one line. What JSON does not know is written as the text that QVariant has for it, else null.
QByteArray Write(const QVariant& value);

} // namespace Json
