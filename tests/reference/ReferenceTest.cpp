#include "tests/reference/Pages.h"
#include "tests/support/GeneratedFile.h"

#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>

namespace
{

const QString kSources = QStringLiteral(VERIDAN_SOURCE_FOLDER);

/// The variables that the handlers' sources name in full.
std::set<QString> NamedVariables()
{
    static const QRegularExpression s_id(QStringLiteral(R"re("(@[^"]*:[^"]+)")re"));
    std::set<QString> ids;
    QDirIterator files(kSources + QStringLiteral("/handlers"), {QStringLiteral("*.h"), QStringLiteral("*.cpp")});
    while (files.hasNext())
    {
        QFile file(files.next());
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        for (auto match = s_id.globalMatch(QString::fromUtf8(file.readAll())); match.hasNext();)
            ids.insert(match.next().captured(1).replace(QLatin1String("\\\\"), QLatin1String("\\")));
    }
    return ids;
}

class ReferenceTest : public Exploration
{};

} // namespace

TEST_F(ReferenceTest, ThePagesSayWhatThePlugInDoes)
{
    const Findings findings = Explore();
    // Of what is easily missed: a selector, and what is written with any page.
    EXPECT_EQ(1u, findings.variables.at(QStringLiteral("@SafeSearch\\Data:safe_search_state"))
                      .shows.count({kSystem, L"common.digiparenting.activated"}));
    EXPECT_EQ(1u, findings.saved.count({kUser, L"windows.browsing_protection.internal.statistics.daily_counters"}));
    ExpectGeneratedFile(kSources + QStringLiteral("/docs/ui-variables.md"), Pages::UiVariables(findings));
    ExpectGeneratedFile(kSources + QStringLiteral("/docs/settings.md"), Pages::SettingsTree(findings));

    std::set<QString> met;
    for (const auto& [handler, variables] : findings.handlers)
        for (const auto& [id, uses] : variables)
            met.insert(id);
    for (const QString& id : NamedVariables())
        EXPECT_EQ(1u, met.count(id)) << id.toStdString() << " was not met";
}
