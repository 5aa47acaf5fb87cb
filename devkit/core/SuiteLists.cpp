#include "devkit/core/SuiteLists.h"

#include "devkit/datapipeline/OrbDpControl.h"
#include "devkit/flyer/NlFlyerControl.h"

#include <QVariantMap>

namespace
{

QVariant StringOrNull(const char* text)
{
    return text ? QVariant(QString::fromUtf8(text)) : QVariant();
}

void NL_SUITE_CALL CollectFlyer(void* context, const NlFlyerView* flyer)
{
    static constexpr const char* kStates[] = {"created", "shown", "closed"};
    QVariantList buttons;
    for (uint32_t i = 0; i < flyer->buttonCount; ++i)
    {
        buttons.append(QVariantMap{{QStringLiteral("caption"), QString::fromWCharArray(flyer->buttons[i].caption)},
                                   {QStringLiteral("action"), StringOrNull(flyer->buttons[i].action)}});
    }
    static_cast<QVariantList*>(context)->append(
        QVariantMap{{QStringLiteral("id"), flyer->id},
                    {QStringLiteral("title"), QString::fromWCharArray(flyer->title)},
                    {QStringLiteral("description"), QString::fromWCharArray(flyer->description)},
                    {QStringLiteral("buttons"), buttons},
                    {QStringLiteral("state"), QLatin1String(kStates[flyer->state])}});
}

void NL_SUITE_CALL CollectMetric(void* context, const OrbDpEvent* event)
{
    QVariantMap row{{QStringLiteral("code"), event->code},
                    {QStringLiteral("name"), QString::fromUtf8(event->name)},
                    {QStringLiteral("major"), event->major}};
    if (event->payload)
        row.insert(QStringLiteral("payload"), QString::fromWCharArray(event->payload));
    static_cast<QVariantList*>(context)->append(row);
}

} // namespace

QVariantList SuiteLists::Flyers()
{
    QVariantList flyers;
    NlFlyerControl_Flyers(&CollectFlyer, &flyers);
    return flyers;
}

QVariantList SuiteLists::Metrics()
{
    QVariantList events;
    OrbDpControl_Events(&CollectMetric, &events);
    return events;
}
