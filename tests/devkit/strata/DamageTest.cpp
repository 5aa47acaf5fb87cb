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
    EXPECT_EQ(Text(repaired, L"key99"), std::string(1000, 'x'));
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
