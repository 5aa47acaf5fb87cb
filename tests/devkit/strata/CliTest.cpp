#include "tests/devkit/strata/Program.h"

#include <gmock/gmock.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

using testing::HasSubstr;

namespace
{

class Cli : public testing::Test
{
protected:
    struct Outcome
    {
        int code;
        std::string output;
        std::string errors;
    };

    Outcome Run(const QStringList& arguments, const QByteArray& input = {})
    {
        Program program("strata", QStringList{"--data", m_folder.path()} + arguments);
        program.Process().write(input);
        const int code = program.ExitCode();
        return {code, program.RestOfOutput(), program.Errors()};
    }

    QString Path(const char* name) const { return m_folder.filePath(QString::fromUtf8(name)); }

    QString Put(const char* name, const QByteArray& contents) const
    {
        QFile file(Path(name));
        file.open(QIODevice::WriteOnly);
        file.write(contents);
        return Path(name);
    }

private:
    QTemporaryDir m_folder;
};

TEST_F(Cli, ExitCodeTellsWhatHappened)
{
    EXPECT_EQ(Run({"--help"}).code, 0);
    for (const QStringList& misuse : {QStringList{},
                                      {"nothing"},
                                      {"get"},
                                      {"get", "a", "b"},
                                      {"set", "a"},
                                      {"list", "--nothing"},
                                      {"list", "--scope"},
                                      {"list", "--scope", "S-2"},
                                      {"--scope", "", "list"},
                                      {"list", "--data", ""},
                                      {"get", ""},
                                      {"set", "a", "1", "--type", "float"}})
    {
        const Outcome outcome = Run(misuse);
        EXPECT_EQ(outcome.code, 2) << misuse.join(' ').toStdString();
        EXPECT_THAT(outcome.errors, HasSubstr("strata: "));
    }
    EXPECT_EQ(Run({"get", "absent"}).code, 3);
    EXPECT_EQ(Run({"remove", "absent"}).code, 3);
    EXPECT_EQ(Run({"import", Path("absent.json")}).code, 1);
    EXPECT_EQ(Run({"export", Path("no/such/folder.json")}).code, 1);
    for (const char* const command : {"import", "seed"})
        EXPECT_THAT(Run({command, Path(".")}).errors, HasSubstr("it is a folder"));
    Put("store.db", "damaged");
    const Outcome damaged = Run({"list"});
    EXPECT_EQ(damaged.code, 1);
    EXPECT_THAT(damaged.errors, HasSubstr("store.db"));
}

TEST_F(Cli, SetKeepsTheKeysTypeAndRefusesWhatIsNoneOfIt)
{
    for (const QStringList& value : {QStringList{"int32", "-2147483648", "2147483648"},
                                     {"int64", "9223372036854775807", "9223372036854775808"},
                                     {"bool", "true", "yes"},
                                     {"object", "[{\"a\":1}]", "[1]"}})
    {
        const QString key = "key." + value[0];
        EXPECT_EQ(Run({"set", key, value[1], "--type", value[0]}).code, 0);
        for (const QString& wrong : {value[2], QString("x"), QString(""), QString("1.5"), QString(" 1")})
            EXPECT_EQ(Run({"set", key, wrong}).code, 4) << value[0].toStdString() << ": " << wrong.toStdString();
        EXPECT_EQ(Run({"get", key}).output, value[1].toStdString() + "\n");
    }
    EXPECT_EQ(Run({"set", "key.bool", "-"}, "false\r\n").code, 0);
    EXPECT_EQ(Run({"get", "key.bool"}).output, "false\n");
    EXPECT_EQ(Run({"set", "key.bool", "-"}, "\xff").code, 4);
    EXPECT_EQ(Run({"set", "key.string", "5", "--type", "string"}).code, 0);
    EXPECT_EQ(Run({"set", "key.string", "true"}).code, 0);
    EXPECT_EQ(Run({"get", "key.string", "--json"}).output, R"({"type":"string","value":"true","constraints":0})"
                                                           "\n");
}

TEST_F(Cli, NewKeyTakesTheTypeThatItsValueLooksLike)
{
    for (const QStringList& value : {QStringList{"true", "bool"},
                                     {"-5", "int32"},
                                     {"2147483648", "int64"},
                                     {"{\"a\":\"b\"}", "object"},
                                     {"{", "string"},
                                     {"", "string"},
                                     {"1 2", "string"}})
    {
        Run({"remove", "key"});
        const Outcome outcome = Run({"set", "key", value[0]});
        EXPECT_EQ(outcome.code, 0);
        EXPECT_THAT(outcome.errors, HasSubstr(value[1].toStdString()));
        EXPECT_THAT(Run({"get", "key", "--json"}).output, HasSubstr("\"" + value[1].toStdString() + "\""));
    }
}

TEST_F(Cli, ExportAndImportLoseNothing)
{
    const QByteArray json = "{\n"
                            R"(  "a": {"type":"bool","value":true,"constraints":4294967295},)"
                            "\n"
                            R"(  "b": {"type":"int32","value":-2147483648,"constraints":0},)"
                            "\n"
                            R"(  "c": {"type":"int64","value":-9223372036854775808,"constraints":0},)"
                            "\n"
                            R"(  "d \"\\\u0001": {"type":"string","value":"\")"
                            "\xF0\x9F\x98\x80"
                            R"(\\\n","constraints":1},)"
                            "\n"
                            R"(  "e": {"type":"utf8","value":"","constraints":0},)"
                            "\n"
                            R"(  "f": {"type":"object","value":[{"n":9223372036854775807,"s":"]}\""},{}],)"
                            R"("constraints":2},)"
                            "\n"
                            R"(  "g": {"type":"none","constraints":3})"
                            "\n"
                            "}\n";
    EXPECT_EQ(Run({"import", "-", "--scope", "system"}, json).code, 0);
    EXPECT_EQ(Run({"export", Path("out.json"), "--scope", "system"}).code, 0);
    EXPECT_EQ(Run({"import", Path("out.json")}).code, 0);
    EXPECT_EQ(Run({"export"}).output, json.toStdString());
    EXPECT_EQ(Run({"list", "--json"}).output, json.toStdString());
    EXPECT_EQ(Run({"export", "--scope", "S-1-5-21-7"}).output, "{}\n");
}

TEST_F(Cli, OnlyAPlainValueReachesTheTerminalAsItIs)
{
    const QString hostile = QStringLiteral("\x1b[31m\x7f\u009b\n");
    EXPECT_EQ(Run({"set", hostile, hostile}).code, 0);
    EXPECT_EQ(Run({"get", hostile}).output, hostile.toStdString() + "\n");
    EXPECT_EQ(Run({"list"}).output, "\\u001b[31m\\u007f\\u009b\\n = \"\\u001b[31m\\u007f\\u009b\\n\"  (string)\n");
    for (const QStringList& words : {QStringList{"export"}, {"get", "none" + hostile}, {"list", "--scope", hostile}})
    {
        const Outcome outcome = Run(words);
        EXPECT_FALSE(QByteArray::fromStdString(outcome.output + outcome.errors).contains('\x1b'));
        EXPECT_FALSE(QString::fromStdString(outcome.output + outcome.errors).contains(QChar(0x9b)));
    }
}

TEST_F(Cli, ImportOfAFileThatIsPartlyWrongChangesNothing)
{
    Run({"set", "kept", "1"});
    const std::string before = Run({"export"}).output;
    for (const char* wrong :
         {R"({"type":"int32","value":"5"})", R"({"type":"int32","value":2147483648})", R"({"type":"bool","value":1})",
          R"({"type":"float","value":1})", R"({"value":1})", R"({"type":"int32"})", R"({"type":"none","value":1})",
          R"({"type":"object","value":[1]})", R"({"type":"utf8","value":"\u0000"})",
          R"({"type":"bool","value":true,"constraints":-1})", R"({"type":"bool","value":true,"more":1})", "5"})
    {
        const Outcome outcome =
            Run({"import", "-"}, QByteArray(R"({"kept":{"type":"int32","value":2},"new":)") + wrong + "}");
        EXPECT_EQ(outcome.code, 4) << wrong;
        EXPECT_THAT(outcome.errors, HasSubstr("\"new\"")) << wrong;
    }
    EXPECT_EQ(Run({"export"}).output, before);
}

TEST_F(Cli, SeedWritesOnlyWhatHasNoValue)
{
    Run({"set", "there", "1"});
    Run({"constrain", "constrained", "enforced"});
    const QString defaults = Put("seed.json", R"({"there":{"type":"int32","value":9},"new":{"type":"int32","value":9},
        "constrained":{"type":"bool","value":true}})");
    EXPECT_EQ(Run({"seed", defaults}).code, 0);
    EXPECT_EQ(Run({"list"}).output, "constrained = true  (bool, enforced)\nnew = 9  (int32)\nthere = 1  (int32)\n");
}

TEST_F(Cli, WatchPrintsChangesOfAnotherProcessUntilItIsInterrupted)
{
    Program watch("strata", {"--data", Path("."), "watch", "common.", "--json"}, ChildProcess::Console::Own);
    watch.Process().setReadChannel(QProcess::StandardError);
    EXPECT_THAT(watch.Line(), HasSubstr("watching"));
    watch.Process().setReadChannel(QProcess::StandardOutput);
    Run({"set", "other", "1"});
    Run({"set", "common.key", "1"});
    EXPECT_EQ(watch.Line(), R"({"key":"common.key","change":"changed","type":"int32","value":1,"constraints":0})");
    Run({"set", "common.key", "1"});
    Run({"constrain", "common.key", "enforced"});
    EXPECT_EQ(watch.Line(), R"({"key":"common.key","change":"changed","type":"int32","value":1,"constraints":1})");
    Run({"remove", "common.key"});
    EXPECT_EQ(watch.Line(), R"({"key":"common.key","change":"removed"})");
    ASSERT_TRUE(watch.Terminate());
    EXPECT_EQ(watch.ExitCode(), 0);
}

} // namespace
