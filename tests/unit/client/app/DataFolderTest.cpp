#include "DataFolder.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

using namespace ::testing;

namespace {

class DataFolderTest : public Test {
protected:
    DataFolderTest() { m_before = umask(022); }
    ~DataFolderTest() override { umask(m_before); }

    QString Path(const char* name = "") const { return place.filePath(QStringLiteral("data/") + QLatin1String(name)); }

    int Mode(const char* name = "") const {
        struct stat info {};
        return stat(QFile::encodeName(Path(name)).constData(), &info) == 0 ? int(info.st_mode & 07777) : -1;
    }

    void Create(const char* name) const {
        QFile file(Path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    }

    QTemporaryDir place;
    mode_t m_before = 0;
};

TEST_F(DataFolderTest, NewFolderAndItsFilesAreTheUsersAlone) {
    PrepareDataFolder(Path());
    Create("client.log");
    QDir(Path()).mkdir(QStringLiteral("pictures"));

    EXPECT_EQ(Mode(), 0700);
    EXPECT_EQ(Mode("client.log"), 0600);
    EXPECT_EQ(Mode("pictures"), 0700);
}

TEST_F(DataFolderTest, FolderOfAnEarlierStartIsClosedForOthers) {
    ASSERT_TRUE(QDir().mkpath(Path()));
    for (const char* name : {"client.sqlite", "client.sqlite-wal", "reports.sqlite.lock", "notes.txt"}) {
        Create(name);
    }
    ASSERT_EQ(Mode(), 0755);

    PrepareDataFolder(Path());

    EXPECT_EQ(Mode(), 0700);
    EXPECT_EQ(Mode("client.sqlite"), 0600);
    EXPECT_EQ(Mode("client.sqlite-wal"), 0600);
    EXPECT_EQ(Mode("reports.sqlite.lock"), 0600);
    EXPECT_EQ(Mode("notes.txt"), 0644) << "not a file of the client";
}

TEST_F(DataFolderTest, SharedFolderStaysShared) {
    ASSERT_TRUE(QDir().mkpath(Path()));
    ASSERT_EQ(chmod(QFile::encodeName(Path()).constData(), 01777), 0);

    PrepareDataFolder(Path());

    EXPECT_EQ(Mode(), 01777);
}

}  // namespace
