#include "tests/reference/Pages.h"

#include "settings/model/VdnSettings.h"
#include "tests/settings/OtherValue.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

#include <gtest/gtest.h>

using StrataSettings::Model;
using StrataSettings::PropertyBase;

namespace
{

constexpr const char* kVariablesIntroduction = R"(# UI variables

Every variable that a handler deals with, and the settings behind it. This page is made by trying the plug-in out: a test starts it with each setting in turn at another value, and has a page write each variable, and notes what comes of it. Do not edit it; `VERIDAN_UPDATE_FILES=1 ./dev test debug -R reference_tests` writes it anew.

- *provides*, *keeps*: declared by the handler; the host keeps the values of the latter itself.
- *follows*: the handler is told when it is written or fired.
- *sets*, *fires*, *reads*: what the handler does with it.
- *shows*: settings that make a difference to its value, or to whether it is fired.
- *saves*: settings that are written after a page has written it and saved.
)";

constexpr const char* kSettingsIntroduction = R"(# Settings

Every key of the settings tree, in the tree's order. The machine's scope and each user's hold the same tree. This page is made from the tree and by trying the plug-in out, as [ui-variables.md](ui-variables.md) is, which tells the variables behind *shown* and *saved*; do not edit it, but write it anew in the same way.

- *class*: the group that declares the key, in `settings/model`.
- *type*: of the value, as the log spells types. Durations count minutes (`ratio<60>`) or seconds, points in time ticks of 100 ns since 1970.
- *stored as*: the store's type.
- *shown*: the scopes in which it makes a difference to the user interface; *saved*: those in which the plug-in writes it. A key without either is the product's alone, or is looked at only when the user does something further.
- *for*: what it is for, from `settings/model/purposes.json`; the development host's page shows it from here.
)";

QString Code(const QString& text)
{
    return QLatin1Char('`') + text + QLatin1Char('`');
}

QString ScopeName(const std::string& sid)
{
    return sid == StoreTest::kSystem ? QStringLiteral("system") : QStringLiteral("user");
}

QByteArray Row(const QStringList& cells)
{
    return ("| " + cells.join(QLatin1String(" | ")) + " |\n").toUtf8();
}

QByteArray TableHead(const QStringList& titles)
{
    return '\n' + Row(titles) + '|' + QByteArray("---|").repeated(titles.size()) + '\n';
}

QString UseNames(const std::set<std::string>& uses)
{
    static constexpr std::pair<const char*, const char*> kNames[] = {
        {"register", "provides"}, {"kept", "keeps"},    {"subscribe", "follows"},
        {"set", "sets"},          {"trigger", "fires"}, {"get", "reads"},
    };
    QStringList names;
    for (const auto& [use, name] : kNames)
        if (uses.count(use) != 0)
            names.append(QLatin1String(name));
    return names.join(QLatin1String(", "));
}

/// One line for each setting; keys that differ in one segment only and are many share a line.
QString Lines(const std::set<Setting>& settings)
{
    constexpr int kMany = 7;
    static const QRegularExpression s_member(QStringLiteral(R"((?<=\.)(\w+day|(?<=allowed_categories\.)\w+)(?=\.|$))"));
    std::map<QString, QStringList> alike;
    for (const auto& [sid, key] : settings)
    {
        const QString text = QString::fromStdWString(key);
        alike[ScopeName(sid) + QLatin1Char(' ') + Code(QString(text).replace(s_member, QStringLiteral("*")))].append(
            ScopeName(sid) + QLatin1Char(' ') + Code(text));
    }
    QStringList lines;
    for (const auto& [common, single] : alike)
        lines += single.size() >= kMany ? QStringList(common) : single;
    return lines.join(QLatin1String("<br>"));
}

/// The class's name without its namespace; the compiler's name for it may end with an E.
QString ClassName(const Model& model)
{
    static const QRegularExpression s_last(QStringLiteral(R"(([A-Za-z_]+?)E?$)"));
    return s_last.match(QLatin1String(typeid(model).name())).captured(1);
}

QString StoreTypeName(OrbStrataType type)
{
    static constexpr const char* kNames[] = {"none", "bool", "int32", "int64", "string", "utf8", "object"};
    return QLatin1String(kNames[type]);
}

QString DefaultString(const StoreTest::Stored& entry)
{
    if (entry.type == ORB_STRATA_TYPE_BOOL)
        return entry.number != 0 ? QStringLiteral("true") : QStringLiteral("false");
    if (entry.type < ORB_STRATA_TYPE_STRING)
        return QString::number(entry.number);
    const QString text = QString::fromStdString(entry.text);
    return Code(entry.type == ORB_STRATA_TYPE_OBJECT ? text : QLatin1Char('"') + text + QLatin1Char('"'));
}

QString Scopes(const std::set<Setting>& settings, const std::wstring& key)
{
    QStringList scopes;
    for (const char* sid : {StoreTest::kSystem, StoreTest::kUser})
        if (settings.count({sid, key}) != 0)
            scopes.append(ScopeName(sid));
    return scopes.join(QLatin1String(", "));
}

/// What each setting is for, by its key, in which "*" stands for one segment or the end of one.
class Purposes
{
public:
    Purposes()
    {
        QFile file(QStringLiteral(VERIDAN_SOURCE_FOLDER "/settings/model/purposes.json"));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        m_texts = QJsonDocument::fromJson(file.readAll()).object();
        for (const QString& pattern : m_texts.keys())
            m_unused.insert(pattern);
    }
    ~Purposes()
    {
        for (const QString& pattern : m_unused)
            ADD_FAILURE() << "settings/model/purposes.json names no setting with " << pattern.toStdString();
    }

    QString Of(const QString& key)
    {
        for (const QString& pattern : m_texts.keys())
        {
            const QString expression = QRegularExpression::escape(pattern).replace("\\*", "[a-z_]+");
            if (!QRegularExpression(QRegularExpression::anchoredPattern(expression)).match(key).hasMatch())
                continue;
            m_unused.erase(pattern);
            return m_texts.value(pattern).toString();
        }
        ADD_FAILURE() << "settings/model/purposes.json does not say what " << key.toStdString() << " is for";
        return {};
    }

private:
    QJsonObject m_texts;
    std::set<QString> m_unused;
};

/// The rows of a group and of the groups inside it.
QByteArray GroupRows(const Model& group, const Findings& findings, const std::set<Setting>& shown, Purposes& purposes)
{
    QByteArray rows;
    group.ForEachChild([&](auto& child) {
        if constexpr (std::is_same_v<decltype(child), Model&>)
            rows += GroupRows(child, findings, shown, purposes);
        else
        {
            const std::wstring& key = child.GetKey().String();
            const StoreTest::Stored& entry = findings.defaults.at(key);
            rows +=
                Row({Code(QString::fromStdWString(key)), Code(ClassName(group)),
                     Code(QString::fromStdWString(TypeNameOf(child))), DefaultString(entry), StoreTypeName(entry.type),
                     Scopes(shown, key), Scopes(findings.saved, key), purposes.Of(QString::fromStdWString(key))});
        }
    });
    return rows;
}

} // namespace

QByteArray Pages::UiVariables(const Findings& findings)
{
    QByteArray page = kVariablesIntroduction;
    for (const auto& [handler, variables] : findings.handlers)
    {
        page += "\n## " + QByteArray::fromStdString(handler) + '\n' +
                TableHead({QStringLiteral("variable"), QStringLiteral("type"), QStringLiteral("the handler"),
                           QStringLiteral("shows"), QStringLiteral("saves")});
        for (const auto& [id, uses] : variables)
        {
            const auto found = findings.variables.find(id);
            const Findings::Variable variable =
                found != findings.variables.end() ? found->second : Findings::Variable();
            QStringList types;
            for (const std::string& type : variable.types)
                types.append(QString::fromStdString(type));
            page += Row({Code(id), types.join(QLatin1String(" or ")), UseNames(uses), Lines(variable.shows),
                         Lines(variable.saves)});
        }
    }
    return page;
}

QByteArray Pages::SettingsTree(const Findings& findings)
{
    std::set<Setting> shown;
    for (const auto& [id, variable] : findings.variables)
        shown.insert(variable.shows.begin(), variable.shows.end());

    QByteArray page = kSettingsIntroduction;
    const VdnSettings tree;
    Purposes purposes;
    tree.ForEachChild([&](auto& group) {
        if constexpr (std::is_same_v<decltype(group), Model&>)
            page += "\n## " + ClassName(group).toUtf8() + '\n' +
                    TableHead({QStringLiteral("key"), QStringLiteral("class"), QStringLiteral("type"),
                               QStringLiteral("default"), QStringLiteral("stored as"), QStringLiteral("shown"),
                               QStringLiteral("saved"), QStringLiteral("for")}) +
                    GroupRows(group, findings, shown, purposes);
    });
    return page;
}
