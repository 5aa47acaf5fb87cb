#include "devkit/core/Json.h"

#include "tarn/VariableIdentifier.h"

#include <QLocale>

#include <cmath>

namespace
{

void WriteValue(QByteArray& out, const QVariant& value);

void WriteEscaped(QByteArray& out, ushort unit)
{
    switch (unit)
    {
    case '"':
        out += "\\\"";
        break;
    case '\\':
        out += "\\\\";
        break;
    case '\n':
        out += "\\n";
        break;
    case '\r':
        out += "\\r";
        break;
    case '\t':
        out += "\\t";
        break;
    default:
        out += "\\u" + QByteArray::number(unit, 16).rightJustified(4, '0');
    }
}

/// A lone surrogate has no UTF-8 form and travels as an escape.
bool IsLoneSurrogate(const QString& text, int at)
{
    const QChar unit = text[at];
    if (unit.isHighSurrogate())
        return at + 1 == text.size() || !text[at + 1].isLowSurrogate();
    return unit.isLowSurrogate() && (at == 0 || !text[at - 1].isHighSurrogate());
}

void WriteText(QByteArray& out, const QString& text)
{
    out += '"';
    int plain = 0;
    for (int at = 0; at < text.size(); ++at)
    {
        const ushort unit = text[at].unicode();
        if (unit < 0x20 || unit == '"' || unit == '\\' || unit == 0x7F || IsLoneSurrogate(text, at))
        {
            out += text.midRef(plain, at - plain).toUtf8();
            WriteEscaped(out, unit);
            plain = at + 1;
        }
    }
    out += text.midRef(plain).toUtf8();
    out += '"';
}

void WriteDouble(QByteArray& out, double number)
{
    if (!std::isfinite(number))
    {
        out += "null";
        return;
    }
    QByteArray literal = QByteArray::number(number, 'g', QLocale::FloatingPointShortest);
    if (!literal.contains('.') && !literal.contains('e'))
        literal += ".0"; // stays a fraction when it is read back
    out += literal;
}

template <class Map>
void WriteObject(QByteArray& out, const Map& object)
{
    out += '{';
    for (auto it = object.begin(); it != object.end(); ++it)
    {
        out += it == object.begin() ? "" : ",";
        WriteText(out, it.key());
        out += ':';
        WriteValue(out, it.value());
    }
    out += '}';
}

template <class List>
void WriteArray(QByteArray& out, const List& array)
{
    out += '[';
    for (int i = 0; i < array.size(); ++i)
    {
        out += i == 0 ? "" : ",";
        WriteValue(out, array[i]);
    }
    out += ']';
}

void WriteOther(QByteArray& out, const QVariant& value)
{
    if (value.userType() == qMetaTypeId<VariableIdentifier>())
        WriteText(out, value.value<VariableIdentifier>().ToString());
    else if (value.canConvert<QString>())
        WriteText(out, value.toString());
    else
        out += "null";
}

void WriteValue(QByteArray& out, const QVariant& value)
{
    switch (static_cast<QMetaType::Type>(value.userType()))
    {
    case QMetaType::UnknownType:
    case QMetaType::Nullptr:
        out += "null";
        break;
    case QMetaType::Bool:
        out += value.toBool() ? "true" : "false";
        break;
    case QMetaType::Char:
    case QMetaType::SChar:
    case QMetaType::UChar:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Long:
    case QMetaType::LongLong:
        out += QByteArray::number(value.toLongLong());
        break;
    case QMetaType::ULong:
    case QMetaType::ULongLong:
        out += QByteArray::number(value.toULongLong());
        break;
    case QMetaType::Float:
    case QMetaType::Double:
        WriteDouble(out, value.toDouble());
        break;
    case QMetaType::QVariantMap:
        WriteObject(out, value.toMap());
        break;
    case QMetaType::QVariantHash:
        WriteObject(out, value.toHash());
        break;
    case QMetaType::QVariantList:
        WriteArray(out, value.toList());
        break;
    case QMetaType::QStringList:
        WriteArray(out, value.toStringList());
        break;
    default:
        WriteOther(out, value);
    }
}

} // namespace

QByteArray Json::Write(const QVariant& value)
{
    QByteArray out;
    WriteValue(out, value);
    return out;
}
