#include "devkit/core/Json.h"

#include "devkit/core/Utf8.h"
#include "tarn/VariableIdentifier.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <limits>
#include <string>
#include <utility>
#include <vector>

namespace
{

using Tree = nlohmann::json;

/// Builds the value while the library reads the text from front to back.
class Builder
{
public:
    explicit Builder(const QByteArray& text) : m_text(text) {}

    Json::Parsed Take() { return {m_error.isEmpty() ? std::move(m_value) : QVariant(), m_error}; }

    // What the library's parser calls; false ends it.
    bool null() { return Add({}); }
    bool boolean(bool value) { return Add(value); }
    bool number_integer(qint64 value)
    {
        const bool isInt = value >= std::numeric_limits<int>::min();
        return Add(isInt ? QVariant(static_cast<int>(value)) : QVariant(static_cast<qlonglong>(value)));
    }
    bool number_unsigned(quint64 value)
    {
        return Add(value <= std::numeric_limits<int>::max()         ? QVariant(static_cast<int>(value))
                   : value <= std::numeric_limits<qlonglong>::max() ? QVariant(static_cast<qlonglong>(value))
                                                                    : QVariant(static_cast<qulonglong>(value)));
    }
    bool number_float(double value, const std::string&) { return Add(value); }
    bool string(const std::string& value) { return Add(ToString(value)); }
    bool binary(const std::vector<std::uint8_t>&) { return false; }
    bool start_object(std::size_t) { return Enter(true); }
    bool start_array(std::size_t) { return Enter(false); }
    bool key(const std::string& name)
    {
        m_open.back().name = ToString(name);
        return true;
    }
    bool end_object() { return Leave(); }
    bool end_array() { return Leave(); }
    bool parse_error(std::size_t position, const std::string&, const Tree::exception& error)
    {
        // "[json.exception…] parse error at line 1, column 8: syntax error while parsing value - invalid literal; last
        // read: '…'": the reason alone, without what was read, which may be the whole text.
        const QString what = QString::fromUtf8(error.what());
        const int reason = what.indexOf(QLatin1String(" - "));
        Fail(reason < 0 ? QStringLiteral("the number is out of range")
                        : what.mid(reason + 3).section(QLatin1String("; last read"), 0, 0),
             position);
        return false;
    }

    void Fail(const QString& reason, std::size_t position)
    {
        const QByteArray before = m_text.left(static_cast<int>(std::max<std::size_t>(position, 1) - 1));
        m_error = QStringLiteral("line %1, column %2: %3")
                      .arg(before.count('\n') + 1)
                      .arg(before.size() - before.lastIndexOf('\n'))
                      .arg(reason);
    }

private:
    struct Container
    {
        bool isObject;
        QVariantMap object;
        QVariantList array;
        QString name; // of the member that is read
    };

    static QString ToString(const std::string& text) { return FromUtf8(text.data(), static_cast<int>(text.size())); }

    bool Add(const QVariant& value)
    {
        if (m_open.empty())
            m_value = value;
        else if (m_open.back().isObject)
            m_open.back().object.insert(m_open.back().name, value);
        else
            m_open.back().array.append(value);
        return true;
    }

    bool Enter(bool isObject)
    {
        if (m_open.size() == Json::kMaximumDepth)
        {
            m_error = QStringLiteral("nested more than %1 deep").arg(Json::kMaximumDepth);
            return false;
        }
        m_open.push_back({isObject, {}, {}, {}});
        return true;
    }

    bool Leave()
    {
        const Container closed = std::move(m_open.back());
        m_open.pop_back();
        return Add(closed.isObject ? QVariant(closed.object) : QVariant(closed.array));
    }

    const QByteArray& m_text;
    std::vector<Container> m_open;
    QVariant m_value;
    QString m_error;
};

/// Turns a value into the library's tree as long as the text stays within its limit.
class Writer
{
public:
    Tree Convert(const QVariant& value);
    bool IsTooLong() const { return m_left < 0; }

private:
    template <class Map>
    Tree Object(const Map& map)
    {
        Tree object = Tree::object();
        for (auto it = map.begin(); it != map.end() && !IsTooLong(); ++it)
            object[Spend(it.key())] = Convert(it.value());
        return object;
    }

    template <class List>
    Tree Array(const List& list)
    {
        Tree array = Tree::array();
        for (auto it = list.begin(); it != list.end() && !IsTooLong(); ++it)
            array.push_back(Convert(*it));
        return array;
    }

    Tree Other(const QVariant& value)
    {
        if (value.userType() == qMetaTypeId<VariableIdentifier>())
            return Spend(value.value<VariableIdentifier>().ToString());
        return value.canConvert<QString>() ? Tree(Spend(value.toString())) : Tree();
    }

    std::string Spend(const QString& text)
    {
        m_left -= text.size();
        return IsTooLong() ? std::string() : text.toStdString();
    }

    qint64 m_left = Json::kLongestString;
};

Tree Writer::Convert(const QVariant& value)
{
    m_left -= 2; // the shortest value and what parts it from the next
    switch (static_cast<QMetaType::Type>(value.userType()))
    {
    case QMetaType::UnknownType:
    case QMetaType::Nullptr:
        return {};
    case QMetaType::Bool:
        return value.toBool();
    case QMetaType::Char:
    case QMetaType::SChar:
    case QMetaType::UChar:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Long:
    case QMetaType::LongLong:
        return value.toLongLong();
    case QMetaType::ULong:
    case QMetaType::ULongLong:
        return value.toULongLong();
    case QMetaType::Float:
    case QMetaType::Double:
        return value.toDouble();
    case QMetaType::QVariantMap:
        return Object(value.toMap());
    case QMetaType::QVariantHash:
        return Object(value.toHash());
    case QMetaType::QVariantList:
        return Array(value.toList());
    case QMetaType::QStringList:
        return Array(value.toStringList());
    default:
        return Other(value);
    }
}

/// The library leaves DEL and C1 as they are; both stand in strings only.
QByteArray EscapeControls(const std::string& text)
{
    constexpr unsigned char kDelete = 0x7F;
    constexpr unsigned char kLeadOfC1 = 0xC2;
    QByteArray out;
    out.reserve(static_cast<int>(text.size()));
    for (std::size_t i = 0; i < text.size(); ++i)
    {
        const auto byte = static_cast<unsigned char>(text[i]);
        const bool c1 = byte == kLeadOfC1 && i + 1 < text.size() && static_cast<unsigned char>(text[i + 1]) < 0xA0;
        if (byte != kDelete && !c1)
            out += text[i];
        else
            out += "\\u00" + QByteArray::number(c1 ? static_cast<unsigned char>(text[++i]) : kDelete, 16);
    }
    return out;
}

} // namespace

Json::Parsed Json::Parse(const QByteArray& text)
{
    Builder builder(text);
    // The library takes a NUL for the end of the text and skips a byte order mark.
    if (const int nul = text.indexOf('\0'); nul >= 0)
        builder.Fail(QStringLiteral("a NUL character"), static_cast<std::size_t>(nul) + 1);
    else if (text.startsWith("\xEF\xBB\xBF"))
        builder.Fail(QStringLiteral("a byte order mark"), 1);
    else
        static_cast<void>(Tree::sax_parse(text.begin(), text.end(), &builder));
    return builder.Take();
}

QByteArray Json::Write(const QVariant& value)
{
    Writer writer;
    const Tree tree = writer.Convert(value);
    if (writer.IsTooLong())
        return {};
    return EscapeControls(tree.dump(-1, ' ', false, Tree::error_handler_t::replace));
}
