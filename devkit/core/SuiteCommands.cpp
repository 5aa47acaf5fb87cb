#include "devkit/core/CommandTable.h"
#include "devkit/datapipeline/OrbDpControl.h"
#include "devkit/flyer/NlFlyerControl.h"

#include <array>

namespace
{

QVariant TextOrNull(const char* text)
{
    return text == nullptr ? QVariant() : QVariant(QString::fromUtf8(text));
}

void NL_SUITE_CALL CollectFlyer(void* context, const NlFlyerView* flyer)
{
    static constexpr std::array<const char*, 3> States{"created", "shown", "closed"};
    QVariantList buttons;
    for (uint32_t i = 0; i < flyer->buttonCount; ++i)
    {
        buttons.append(QVariantMap{{QStringLiteral("caption"), QString::fromWCharArray(flyer->buttons[i].caption)},
                                   {QStringLiteral("action"), TextOrNull(flyer->buttons[i].action)}});
    }
    static_cast<QVariantList*>(context)->append(
        QVariantMap{{QStringLiteral("id"), flyer->id},
                    {QStringLiteral("title"), QString::fromWCharArray(flyer->title)},
                    {QStringLiteral("description"), QString::fromWCharArray(flyer->description)},
                    {QStringLiteral("buttons"), buttons},
                    {QStringLiteral("state"), QLatin1String(States.at(flyer->state))}});
}

void NL_SUITE_CALL CollectEvent(void* context, const OrbDpEvent* event)
{
    QVariantMap row{{QStringLiteral("code"), event->code},
                    {QStringLiteral("name"), QString::fromUtf8(event->name)},
                    {QStringLiteral("major"), event->major}};
    if (event->payload != nullptr)
        row.insert(QStringLiteral("payload"), QString::fromWCharArray(event->payload));
    static_cast<QVariantList*>(context)->append(row);
}

Answer Flyers(Host&, const Arguments&)
{
    QVariantList flyers;
    NlFlyerControl_Flyers(&CollectFlyer, &flyers);
    return {flyers, {}};
}

Answer Press(Host&, const Arguments& arguments)
{
    const bool pressed = NlFlyerControl_Press(static_cast<int32_t>(arguments.Number("flyer")),
                                              static_cast<uint32_t>(arguments.Number("button")));
    return {{}, pressed ? QString() : QStringLiteral("There is no such button on a flyer that is shown.")};
}

Answer FlyerFault(Host&, const Arguments& arguments)
{
    if (!arguments.Has("function"))
    {
        NlFlyerControl_ClearFaults();
        return {};
    }
    if (!arguments.Has("code"))
        return Answer::Failure(QStringLiteral("The argument \"code\" is missing."));
    const QString function = arguments.Text("function");
    const bool known =
        NlFlyerControl_SetFault(function.toUtf8().constData(), static_cast<int32_t>(arguments.Number("code")),
                                static_cast<uint32_t>(arguments.Number("count", 1)));
    return {{}, known ? QString() : QStringLiteral("The flyer library has no function \"%1\".").arg(function)};
}

Answer Metrics(Host&, const Arguments&)
{
    QVariantList events;
    OrbDpControl_Events(&CollectEvent, &events);
    return {events, {}};
}

Answer MetricsFault(Host&, const Arguments& arguments)
{
    OrbDpControl_SetFault(static_cast<int32_t>(arguments.Number("code")),
                          static_cast<uint32_t>(arguments.Number("count", 1)));
    return {};
}

} // namespace

std::vector<Command> SuiteCommands()
{
    using Kind = ArgumentKind;
    constexpr auto Optional = Parameter::Need::Optional;
    return {
        {"flyers", {}, &Flyers},
        {"flyer.press", {{"flyer", Kind::Int32}, {"button", Kind::UInt32}}, &Press},
        {"flyer.fault",
         {{"function", Kind::Name, Optional}, {"code", Kind::Int32, Optional}, {"count", Kind::UInt32, Optional}},
         &FlyerFault},
        {"metrics", {}, &Metrics},
        {"metrics.fault", {{"code", Kind::Int32}, {"count", Kind::UInt32, Optional}}, &MetricsFault},
    };
}
