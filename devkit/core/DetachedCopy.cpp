#include "devkit/core/DetachedCopy.h"

#include "tarn/VariableIdentifier.h"

namespace
{

template <class Map>
Map OfMap(const Map& map)
{
    Map copy;
    for (auto it = map.begin(); it != map.end(); ++it)
        copy.insert(DetachedCopy::Of(it.key()), DetachedCopy::Of(it.value()));
    return copy;
}

template <class List>
List OfList(const List& list)
{
    List copy;
    copy.reserve(list.size());
    for (const auto& item : list)
        copy.append(DetachedCopy::Of(item));
    return copy;
}

QVariant OfRegistered(const QVariant& value)
{
    if (value.userType() == qMetaTypeId<VariableIdentifier>())
        return QVariant::fromValue(VariableIdentifier(DetachedCopy::Of(value.value<VariableIdentifier>().ToString())));
    return value.canConvert<QString>() ? QVariant(DetachedCopy::Of(value.toString())) : QVariant();
}

} // namespace

QString DetachedCopy::Of(const QString& text)
{
    return QString(text.constData(), text.size());
}

QVariant DetachedCopy::Of(const QVariant& value)
{
    switch (value.userType())
    {
    case QMetaType::QString:
        return Of(value.toString());
    case QMetaType::QByteArray:
        return QByteArray(value.toByteArray().constData(), value.toByteArray().size());
    case QMetaType::QStringList:
        return OfList(value.toStringList());
    case QMetaType::QVariantList:
        return OfList(value.toList());
    case QMetaType::QVariantMap:
        return OfMap(value.toMap());
    case QMetaType::QVariantHash:
        return OfMap(value.toHash());
    default:
        return value.userType() < QMetaType::User ? value : OfRegistered(value);
    }
}
