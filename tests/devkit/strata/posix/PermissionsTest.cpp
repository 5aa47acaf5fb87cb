#include "tests/support/posix/FileModes.h"

#include "tests/devkit/strata/StoreFixture.h"

namespace
{

using testing::ElementsAre;

class StorePermissions : public StoreFixture
{
protected:
    /// What the store makes in a folder of this name under this mask.
    std::vector<std::string> Made(mode_t mask, const char* folder)
    {
        const Umask inForce(mask);
        OrbStrataControl_SetStoreFile(Path((std::string(folder) + "/store.db").c_str()).c_str());
        const Opened writer(Opened::Kind::Product);
        EXPECT_EQ(OrbStrata_SetBool(writer, L"key", true), 0U);
        return ModesBelow(QString::fromStdString(Path(folder)));
    }
};

TEST_F(StorePermissions, NobodyButTheOwnerMayWriteAndTheMaskMayKeepReadersOut)
{
    EXPECT_THAT(Made(0, "open"),
                ElementsAre("store.db 644", "store.db-shm 644", "store.db-stamp 644", "store.db-wal 644"));
    EXPECT_THAT(Made(022, "usual"),
                ElementsAre("store.db 644", "store.db-shm 644", "store.db-stamp 644", "store.db-wal 644"));
    EXPECT_THAT(Made(077, "closed"),
                ElementsAre("store.db 600", "store.db-shm 600", "store.db-stamp 600", "store.db-wal 600"));
}

} // namespace
