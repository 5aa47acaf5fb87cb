#include "tests/devkit/strata/RawStore.h"
#include "tests/devkit/strata/StoreFixture.h"

#include <QDir>
#include <QFile>

using Kind = Opened::Kind;

namespace
{

class Damage : public StoreFixture
{
protected:
    void Put(const char* name, const QByteArray& contents) const
    {
        QFile file(QString::fromStdString(Path(name)));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(contents);
    }

    QByteArray Contents(const char* name) const
    {
        QFile file(QString::fromStdString(Path(name)));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    /// A store with a value in it, whole in its main file.
    void MakeStore() const
    {
        const Opened writer(Kind::Product);
        for (int i = 0; i < 100; ++i)
            OrbStrata_SetStringUtf8(writer, (L"key" + std::to_wstring(i)).c_str(), std::string(1000, 'x').c_str());
    }

    /// What any program may do to the file while nobody has it open.
    void Tamper(const char* sql) const { EXPECT_TRUE(RawStore(StoreFile()).Run(sql)) << sql; }

    void ExpectRefused() const
    {
        const QByteArray before = Contents("data/store.db");
        for (const Kind kind : {Kind::Normal, Kind::Product})
        {
            const Opened handle(kind);
            EXPECT_EQ(OrbStrataHandle(handle), nullptr);
            EXPECT_EQ(handle.Result(), OrbStrataResult{ORB_STRATA_STORE_FAILED});
        }
        EXPECT_THAT(LastError(), testing::AllOf(testing::HasSubstr(StoreFile()), testing::EndsWith(".")));
        EXPECT_TRUE(Contents("data/store.db") == before) << "the damaged file was written";
    }
};

TEST_F(Damage, MissingFileAndFoldersAreMade)
{
    OrbStrataControl_SetStoreFile(Path("data/one/two/store.db").c_str());
    const Opened handle(Kind::Product);
    EXPECT_EQ(handle.Result(), 0U);
    EXPECT_EQ(OrbStrata_SetBool(handle, L"key", true), 0U);
    EXPECT_TRUE(QFile::exists(QString::fromStdString(Path("data/one/two/store.db"))));
}

TEST_F(Damage, FileThatIsNoStoreIsRefusedAndLeftAlone)
{
    QDir().mkpath(QString::fromStdString(Path("data")));
    Put("data/store.db", QByteArray("This is no database. ").repeated(1000));
    ExpectRefused();
}

TEST_F(Damage, StoreThatWasOverwrittenIsRefusedThoughItsLogIsWhole)
{
    QByteArray log;
    {
        const Opened writer(Kind::Product);
        OrbStrata_SetBool(writer, L"key", true);
        log = Contents("data/store.db-wal");
        ASSERT_FALSE(log.isEmpty());
    }
    for (const QByteArray& contents : {QByteArray("short"), QByteArray(100000, 'x')})
    {
        Put("data/store.db", contents);
        Put("data/store.db-wal", log);
        ExpectRefused();
    }
}

TEST_F(Damage, TruncatedStoreIsRefusedAndLeftAloneUntilItIsRepaired)
{
    MakeStore();
    const QByteArray whole = Contents("data/store.db");
    ASSERT_GT(whole.size(), 100000);
    for (const char* rest : {"data/store.db-wal", "data/store.db-shm"})
        QFile::remove(QString::fromStdString(Path(rest)));
    for (const int size : {whole.size() / 2, 4096, 1000, 50})
    {
        SCOPED_TRACE(size);
        Put("data/store.db", whole.left(size));
        ExpectRefused();
    }
    Put("data/store.db", whole);
    const Opened repaired(Kind::Normal);
    EXPECT_EQ(String(repaired, L"key99"), std::string(1000, 'x'));
}

TEST_F(Damage, EmptyFileBesideALogIsRefusedButAnEmptyFileAloneBecomesAStore)
{
    QDir().mkpath(QString::fromStdString(Path("data")));
    Put("data/store.db", "");
    Put("data/store.db-wal", "the log");
    ExpectRefused();
    EXPECT_EQ(Contents("data/store.db-wal"), "the log");
    QFile::remove(QString::fromStdString(Path("data/store.db-wal")));
    EXPECT_EQ(Opened(Kind::Normal).Result(), 0U);
}

TEST_F(Damage, EntryThatTheStoreCannotHaveWrittenIsRefused)
{
    MakeStore();
    for (const char* entry :
         {"'S-1-5-18', 'odd type', 'word', 0, 1, 5", "'S-1-5-18', 'odd constraints', 2, 'word', 1, 5",
          "'S-1-5-18', CAST(x'ff' AS TEXT), 2, 0, 1, 5"})
    {
        Tamper(
            (std::string("INSERT INTO entries (scope, key, type, constraints, revision, value) VALUES (") + entry + ")")
                .c_str());
        ExpectRefused();
        Tamper("DELETE FROM entries WHERE key NOT LIKE 'key%'");
    }
    EXPECT_EQ(Opened(Kind::Normal).Result(), 0U);
}

TEST_F(Damage, ViewInPlaceOfATableIsRefusedInsteadOfBeingRead)
{
    MakeStore();
    Tamper("DROP TABLE entries; CREATE VIEW entries(scope, key, type, constraints, revision, value) AS "
           "WITH RECURSIVE endless(n) AS (SELECT 1 UNION ALL SELECT n + 1 FROM endless) "
           "SELECT 'S-1-5-18', n, 2, 0, 1, n FROM endless WHERE n < 0");
    ExpectRefused();
}

TEST_F(Damage, StoreOfTheFirstVersionIsTakenOver)
{
    QDir().mkpath(QString::fromStdString(Path("data")));
    Tamper(
        "CREATE TABLE entries (scope TEXT NOT NULL, key TEXT NOT NULL, type INTEGER NOT NULL, constraints INTEGER NOT "
        "NULL, revision INTEGER NOT NULL, value, PRIMARY KEY (scope, key)) WITHOUT ROWID;"
        "CREATE TABLE changes (revision INTEGER PRIMARY KEY, scope TEXT NOT NULL, key TEXT NOT NULL, kind INTEGER NOT "
        "NULL, valueWrite INTEGER NOT NULL, text TEXT);"
        "INSERT INTO entries VALUES ('S-1-5-18', 'key', 2, 1, 7, 42);"
        "INSERT INTO changes VALUES (6, 'S-1-5-18', 'key', 1, 1, NULL), (7, 'S-1-5-18', 'key', 1, 0, NULL);"
        "PRAGMA application_id = 1400140404; PRAGMA user_version = 1; PRAGMA journal_mode = WAL");
    const Opened writer(Kind::Product);
    EXPECT_EQ(Stored(writer, L"key"), "2 42  1");
    EXPECT_EQ(OrbStrata_SetInt32(writer, L"key", 43), 0U);
    EXPECT_EQ(RawStore(StoreFile()).Number("SELECT max(revision) FROM changes"), 8);
}

TEST_F(Damage, FolderInPlaceOfTheFileIsAnError)
{
    QDir().mkpath(QString::fromStdString(StoreFile()));
    ExpectRefused();
}

TEST_F(Damage, FileInPlaceOfTheFolderIsAnError)
{
    Put("data", "a file");
    ExpectRefused();
}

} // namespace
