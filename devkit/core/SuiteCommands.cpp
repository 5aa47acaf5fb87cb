#include "devkit/core/HostCommands.h"
#include "devkit/core/SuiteLists.h"
#include "devkit/datapipeline/OrbDpControl.h"
#include "devkit/flyer/NlFlyerControl.h"

namespace
{

/// Without a function it is every one, in place of what was set before.
Answer MetricsFault(const Arguments& arguments)
{
    const QByteArray function = arguments.String("function").toUtf8();
    const bool known = OrbDpControl_SetFault(arguments.Has("function") ? function.constData() : nullptr,
                                             static_cast<int32_t>(arguments.Number("code")),
                                             static_cast<uint32_t>(arguments.Number("count", 1)));
    return {{}, known ? QString() : UnknownFunction(arguments.String("function"))};
}

} // namespace

std::vector<Command> SuiteCommands()
{
    using namespace CommandWords;
    return {
        {"flyers",
         "the flyers that were made",
         {},
         [](const Arguments&) {
             return Answer{SuiteLists::Flyers(), {}};
         },
         Turn::Any},
        {"flyer.press",
         "presses a button of a flyer, which are counted from 0",
         {{"flyer", Kind::Int32}, {"button", Kind::UInt32}},
         [](const Arguments& arguments) {
             const bool pressed = NlFlyerControl_Press(static_cast<int32_t>(arguments.Number("flyer")),
                                                       static_cast<uint32_t>(arguments.Number("button")));
             return Answer{{},
                           pressed ? QString() : QStringLiteral("There is no such button on a flyer that is shown.")};
         }},
        {"flyer.fault",
         "makes the plug-in's next calls of a flyer function answer a code",
         {{"function", Kind::Name, kOptional}, {"code", Kind::Int32, kOptional}, {"count", Kind::UInt32, kOptional}},
         [](const Arguments& arguments) {
             return SetFault(
                 arguments, &NlFlyerControl_ClearFaults, [](const QByteArray& function, qint64 code, quint32 count) {
                     return NlFlyerControl_SetFault(function.constData(), static_cast<int32_t>(code), count);
                 });
         }},
        {"metrics",
         "the metric events that were recorded",
         {},
         [](const Arguments&) {
             return Answer{SuiteLists::Metrics(), {}};
         },
         Turn::Any},
        {"metrics.fault",
         "makes the plug-in's next metric events, or those of one function, answer a code",
         {{"code", Kind::Int32}, {"count", Kind::UInt32, kOptional}, {"function", Kind::Name, kOptional, nullptr, ""}},
         &MetricsFault},
        {"faults",
         "what is made to fail, and the functions that can be",
         {},
         [](const Arguments&) {
             return Answer{QVariantMap{{QStringLiteral("active"), SuiteLists::Faults()},
                                       {QStringLiteral("functions"), SuiteLists::FailableFunctions()}},
                           {}};
         },
         Turn::Any},
    };
}
