#include "devkit/core/SuiteLists.h"

#include "devkit/datapipeline/OrbDpControl.h"
#include "devkit/flyer/NlFlyerControl.h"
#include "devkit/strata/OrbStrataControl.h"

#include <string_view>
#include <vector>

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

struct Function
{
    std::string_view result;
    const char* name;
};

/// A suite library whose calls can be made to fail.
struct Library
{
    const char* name;
    bool codeIsSigned;
    void(NL_SUITE_CALL* faults)(SuiteFaultVisitor visitor, void* context);
    std::vector<Function> functions;
};

const std::vector<Library>& Libraries()
{
#define FUNCTION(result, name, parameters) {#result, #name},
    static const std::vector<Library> s_libraries{
        {"store", false, &OrbStrataControl_Faults, {NL_ORB_STRATA_FUNCTIONS(FUNCTION)}},
        {"flyer", true, &NlFlyerControl_Faults, {NL_FLYER_FUNCTIONS(FUNCTION)}},
        {"metrics", true, &OrbDpControl_Faults, {NL_ORB_DP_API_FUNCTIONS(FUNCTION)}},
    };
#undef FUNCTION
    return s_libraries;
}

struct FaultList
{
    const Library& library;
    QVariantList& rows;
};

void NL_SUITE_CALL CollectFault(void* context, const SuiteFault* fault)
{
    const auto& [library, rows] = *static_cast<FaultList*>(context);
    const qint64 code = library.codeIsSigned ? qint64{static_cast<qint32>(fault->code)} : qint64{fault->code};
    QVariantMap row{{QStringLiteral("library"), QLatin1String(library.name)},
                    {QStringLiteral("code"), code},
                    {QStringLiteral("count"), fault->count}};
    if (fault->function)
        row.insert(QStringLiteral("function"), QLatin1String(fault->function));
    if (fault->key)
        row.insert(QStringLiteral("key"), QString::fromWCharArray(fault->key));
    rows.append(row);
}

} // namespace

QVariantList SuiteLists::Faults()
{
    QVariantList rows;
    for (const Library& library : Libraries())
    {
        FaultList list{library, rows};
        library.faults(&CollectFault, &list);
    }
    return rows;
}

QVariantMap SuiteLists::FailableFunctions()
{
    QVariantMap byLibrary;
    for (const Library& library : Libraries())
    {
        QStringList names;
        for (const Function& function : library.functions)
            if (function.result != "void") // which has no answer to fail with
                names.append(QLatin1String(function.name));
        byLibrary.insert(QLatin1String(library.name), names);
    }
    return byLibrary;
}

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
