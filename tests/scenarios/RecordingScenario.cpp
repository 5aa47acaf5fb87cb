#include "tests/scenarios/HostProcess.h"
#include "tests/scenarios/Strata.h"

#include <gmock/gmock.h>

#include <QFile>

#include <string>

using testing::AllOf;
using testing::HasSubstr;

namespace
{

constexpr const char* kRequestSettings = "@Veridan\\Settings\\Triggers:request_show_settings_ui";
constexpr const char* kTimeLimit = "@TimeLimit\\Data:time_limit_state";

class RecordingScenario : public testing::Test
{
protected:
    QString File() const { return m_folder.filePath("day.jsonl"); }

    QByteArray Read() const
    {
        QFile file(File());
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }

    void Write(const QByteArray& text) const
    {
        QFile file(File());
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    }

    /// The exit code; `told` receives what was printed.
    int Replay(std::string& told) const
    {
        ChildProcess process;
        process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        process.start(HostProcess::Program(), {"--replay", File()});
        EXPECT_TRUE(process.waitForFinished(60'000));
        told = process.readAllStandardOutput().toStdString();
        return process.exitCode();
    }

    QTemporaryDir m_folder;
};

TEST_F(RecordingScenario, WhatAHostWasBeforeBelongsToTheRecording)
{
    {
        HostProcess host;
        host.StoreSet("user", "common.content.enabled", "bool", true);
        host.Do("store.constrain", {{"scope", "user"}, {"key", "common.content.enabled"}, {"constraints", 1}});
        host.Set("@Veridan\\Websites\\Strings:admin_entry", "set by admin");
        host.Do("elevation", {{"answer", "ask"}});
        host.Do("watch", {{"topic", "elevation"}});
        host.Load();
        host.Do("record");
        host.Fails("record");
        for (const bool accept : {false, true})
        {
            host.Post("trigger", {{"name", kRequestSettings}});
            const QVariantMap prompt =
                host.AwaitEvent([](const QVariantMap& row) { return row["event"] == "elevation"; });
            host.Post("elevation.answer", {{"prompt", prompt["prompt"]}, {"accept", accept}});
            for (int answers = 0; answers < 2; ++answers)
                EXPECT_EQ(true, host.AwaitEvent([](const QVariantMap& row) { return row.contains("id"); })["ok"]);
        }
        host.Set(kTimeLimit, "MoveOn");
        host.Set("@Veridan\\MainGUI:visible", true); // saved by a thread, some time later
        const Strata strata(host.DataFolder());
        strata.Set("common.time.enabled", "false");
        host.Do("settle");
        strata.Run({"remove", "common.time.enabled"});
        host.Do("settle");
        host.Do("unload");
        const QVariantMap recorded = host.Do("record", {{"on", false}}).toMap();
        host.Fails("record", {{"on", false}});
        Write(recorded["text"].toString().toUtf8());
        EXPECT_EQ(recorded["lines"].toInt(), Read().count('\n'));
        EXPECT_THAT(Read().toStdString(), AllOf(HasSubstr(R"("by":"other")"), HasSubstr(R"("op":"elevation.answer")")));
    }
    std::string told;
    EXPECT_EQ(0, Replay(told)) << told;
}

TEST_F(RecordingScenario, AnEndWithoutWarningLosesTheLastLineAtMost)
{
    HostProcess host;
    host.Do("record", {{"file", File()}});
    host.Load();
    host.Set(kTimeLimit, "MoveOn");
    host.Kill();
    std::string told;
    EXPECT_EQ(2, Replay(told));
    EXPECT_THAT(told, AllOf(HasSubstr("ends here without its end line"),
                            HasSubstr("line " + std::to_string(Read().count('\n') + 1))));
    HostProcess another;
    EXPECT_THAT(another.Fails("record", {{"file", File()}}).toStdString(), HasSubstr("day.jsonl")); // it stays
}

TEST_F(RecordingScenario, ADifferenceAndAUselessRecordingAreNamed)
{
    {
        HostProcess host;
        host.Do("record", {{"file", File()}});
        host.Load();
        host.Trigger(kRequestSettings);
        host.Set(kTimeLimit, "MoveOn");
        host.Do("unload");
        host.Do("record", {{"on", false}});
    }
    const QByteArray whole = Read();
    const QByteArray level(R"({"set":"@ContentControl\\Status:status_level","value":"Ok"})"
                           "\n");
    const QByteArray main(R"({"set":"@ContentControl\\Status:main_status","value":"UsersProtected"})"
                          "\n");
    const QByteArray write(R"({"scope":"user","type":"bool","value":true,"write":"common.time.enabled"})"
                           "\n");
    const QByteArray next(R"({"scope":"user","type":"bool","value":true,"write":"common.time.quota.enabled"})"
                          "\n");
    struct Row
    {
        QByteArray from, to; // of the text
        int exitCode;
        const char* told;
    };
    for (const Row& row : {
             Row{"", "", 0, ""},
             Row{level + main, main + level, 1, "in another order"},
             Row{write, QByteArray(write).replace("true", "false"), 1, "another value"},
             Row{write, "", 1, "this was not recorded"},
             Row{write, write + QByteArray(next).replace("quota", "curfew"), 1, "this did not come"},
             Row{R"("loaded":true}})"
                 "\n",
                 R"("loaded":true,"error":"none"}})"
                 "\n",
                 1, "expected  {\"result\":"},
             Row{R"("protocol":1)", R"("leftOut":{"values":["*.enabled"]},"protocol":1)", 0, ""},
             Row{R"("protocol":1)", R"("leftOut":{"parts":{"@A":"("}},"protocol":1)", 2, "line 1: what to leave out"},
             Row{R"("protocol":1)", R"("protocol":2)", 2, "line 1: the recording was made with protocol 2"},
             Row{"veridan-recording", "another", 2, "line 1: this is not the head of a recording"},
             Row{level,
                 R"({"set":"@A:b","value":})"
                 "\n",
                 2, "column 23: "},
             Row{level,
                 R"({"fired":"@A:b"})"
                 "\n",
                 2, "neither a request nor"},
             Row{R"("op":"unload")", R"("op":"eject")", 2, "There is no command \"eject\"."},
             Row{"{\"end\":true}\n", "", 2, "ends here without its end line"},
             Row{"true}\n", "true}", 2, "cut in the middle of a line"},
             Row{"{\"end\":true}\n", "{\"end\":true}\n" + level, 2, "goes on after its end"},
         })
    {
        const int at = row.exitCode == 2 ? whole.lastIndexOf(row.from) : whole.indexOf(row.from);
        ASSERT_GE(at, 0) << row.from.constData();
        Write(QByteArray(whole).replace(at, row.from.size(), row.to));
        std::string told;
        EXPECT_EQ(row.exitCode, Replay(told)) << row.to.constData() << told;
        EXPECT_THAT(told, HasSubstr(row.told));
        EXPECT_THAT(told, HasSubstr(row.exitCode == 0 ? "" : "day.jsonl: line "));
    }
}

} // namespace
