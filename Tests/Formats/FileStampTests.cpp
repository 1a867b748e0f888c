#include "Typloom/Formats/FileReading.h"

#include "Tests/Support/FilesIn.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>

namespace {

struct StampedFile {
    explicit StampedFile(int ageInSeconds)
    {
        write("12345", ageInSeconds);
        EXPECT_TRUE(readFileInside(folder.path(), "a.glif", "a.glif", &stamp));
    }

    void write(std::string const& content, int ageInSeconds) const
    {
        std::ofstream(path) << content;
        auto const now = std::chrono::system_clock::now().time_since_epoch();
        auto const time = std::chrono::duration_cast<std::chrono::seconds>(now).count() - ageInSeconds;
        timespec const times[] { { time, 0 }, { time, 0 } };
        ::utimensat(AT_FDCWD, path.c_str(), times, 0);
    }

    TemporaryFolder folder;
    std::filesystem::path path { folder.path() / "a.glif" };
    FileStamp stamp;
};

} // namespace

TEST(FileStamp, tellsAnotherContentFromAnotherTime)
{
    StampedFile const file(1000);
    EXPECT_FALSE(hasChanged(file.path, file.stamp));
    file.write("12345", 10);
    EXPECT_FALSE(hasChanged(file.path, file.stamp)) << "only touched";
    file.write("12346", 10);
    EXPECT_TRUE(hasChanged(file.path, file.stamp));
    file.write("1234", 10);
    EXPECT_TRUE(hasChanged(file.path, file.stamp));
    std::filesystem::remove(file.path);
    EXPECT_TRUE(hasChanged(file.path, file.stamp));
}

TEST(FileStamp, doesNotTrustATimeThatWasJustNow)
{
    StampedFile const file(0);
    auto const time = std::filesystem::last_write_time(file.path);
    file.write("54321", 0);
    std::filesystem::last_write_time(file.path, time);
    EXPECT_TRUE(hasChanged(file.path, file.stamp));
}

TEST(FileStamp, ofAReplacedFileLooksIntoIt)
{
    StampedFile const file(1000);
    std::filesystem::rename(file.path, file.folder.path() / "b.glif");
    file.write("54321", 1000);
    EXPECT_TRUE(hasChanged(file.path, file.stamp));
    std::filesystem::rename(file.folder.path() / "b.glif", file.path);
    EXPECT_FALSE(hasChanged(file.path, file.stamp));
}
