#include "devkit/core/Host.h"
#include "devkit/core/HostCommands.h"
#include "devkit/strata/OrbStrataControl.h"

Answer SetFault(const Arguments& arguments, const std::function<void()>& clear,
                const std::function<bool(const QByteArray& function, qint64 code, quint32 count)>& set)
{
    if (!arguments.Has("function"))
    {
        clear();
        return {};
    }
    if (!arguments.Has("code"))
        return Answer::Failure(QStringLiteral("The argument \"code\" is missing."));
    const QString function = arguments.String("function");
    const bool known =
        set(function.toUtf8(), arguments.Number("code"), static_cast<quint32>(arguments.Number("count", 1)));
    return {{}, known ? QString() : UnknownFunction(function)};
}

QString UnknownFunction(const QString& name)
{
    return QStringLiteral("There is no function \"%1\".").arg(name);
}

namespace
{

Answer Fault(const Arguments& arguments)
{
    const std::wstring key = arguments.String("key").toStdWString();
    return SetFault(arguments, &OrbStrataControl_ClearFaults,
                    [&arguments, &key](const QByteArray& function, qint64 code, quint32 count) {
                        return OrbStrataControl_SetFault(function.constData(),
                                                         arguments.Has("key") ? key.c_str() : nullptr,
                                                         static_cast<OrbStrataResult>(code), count);
                    });
}

Answer Writes(const Host& host, const Arguments& arguments)
{
    QVariantList rows;
    for (const StoreWrites::Write& write : host.storeWrites.Since(static_cast<quint64>(arguments.Number("since"))))
    {
        rows.append(
            QVariantMap{{QStringLiteral("seq"), write.sequence},
                        {QStringLiteral("scope"), write.scope},
                        {QStringLiteral("key"), write.key},
                        {QStringLiteral("by"), write.byPlugIn ? QStringLiteral("plugin") : QStringLiteral("product")}});
    }
    return {rows, {}};
}

} // namespace

std::vector<Command> StoreTestCommands(Host& host)
{
    using namespace CommandWords;
    return {
        {"store.fault",
         "makes the plug-in's next calls of a store function answer a code",
         {{"function", Kind::Name, kOptional},
          {"code", Kind::UInt32, kOptional},
          {"key", Kind::Name, kOptional},
          {"count", Kind::UInt32, kOptional}},
         &Fault},
        {"store.writes",
         "every value write that reached the store in this run",
         {{"since", Kind::Natural, kOptional}},
         [&host](const Arguments& arguments) { return Writes(host, arguments); },
         Turn::Any},
        {"elevation",
         "the answer to the plug-in's elevation prompts",
         {{"answer", Kind::String, kRequired, Elevation::kModeNames}},
         [&host](const Arguments& arguments) {
             host.elevation.SetMode(arguments.String("answer"));
             return Answer{};
         }},
        {"elevation.answer",
         "answers one prompt",
         {{"prompt", Kind::Natural}, {"accept", Kind::Bool}},
         [&host](const Arguments& arguments) {
             return Answer{
                 {}, host.elevation.Answer(static_cast<quint64>(arguments.Number("prompt")), arguments.Bool("accept"))};
         },
         Turn::AtOnce},
    };
}
