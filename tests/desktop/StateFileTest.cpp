#include "desktop/state/StateFile.h"

#include "tests/desktop/AppFolder.h"

#include <csignal>
#include <random>
#include <sys/wait.h>
#include <unistd.h>

namespace corvane::desktop {
namespace {

// The writer says when it has written, and dies in whatever it does after so many times.
TEST(StateFile, WriterThatIsKilledLosesNothingButItsLastChange) {
    const QTemporaryDir folder;
    std::mt19937 random(1);
    const QString path = folder.filePath("state.json");
    int kept = 0;
    for (int kill = 0; kill < 50; ++kill) {
        int pipe[2];
        ASSERT_EQ(::pipe(pipe), 0);
        const pid_t child = ::fork();
        if (child == 0) {
            StateFile file(path, {});
            for (int i = kept + 1;; ++i)
                if (!file.Write({{"n", i}, {"filling", QString(3000, 'x')}}) ||
                    ::write(pipe[1], &i, sizeof i) != static_cast<ssize_t>(sizeof i))
                    ::_exit(1);
        }
        ::close(pipe[1]);
        int told = kept;
        const auto hear = [&] { return ::read(pipe[0], &told, sizeof told) == static_cast<ssize_t>(sizeof told); };
        for (auto more = 1 + random() % 4; more > 0; --more)
            ASSERT_TRUE(hear()) << "the writer has ended by itself";
        ::kill(child, SIGKILL);
        ::waitpid(child, nullptr, 0);
        while (hear()) {
        }
        ::close(pipe[0]);
        QString note;
        const int read = StateFile(path, [&](const QString& s) { note = s; }).Read()["n"].toInt();
        ASSERT_EQ(note, "");
        ASSERT_TRUE(read == told || read == told + 1) << read << " was read, " << told << " was written";
        kept = read;
    }
    EXPECT_GE(kept, 50);
}

TEST(StateFile, DamagedFileCostsOnlyItselfAndIsToldOf) {
    for (const char* text : {"", "[1]", "{\"a\":", "\xff\xfe", "null"}) {
        const AppFolder folder;
        QStringList notes;
        StateFile file(folder.Path("s.json"), [&](const QString& s) { notes.append(s); });
        for (const QString& ending : QStringList{"broken", "broken-2"}) {
            folder.Write("s.json", ending.toUtf8() + text);
            EXPECT_TRUE(file.Read().isEmpty()) << text;
            EXPECT_TRUE(notes.takeFirst().contains("\"." + ending + "\"")) << text;
            EXPECT_EQ(folder.Read("s.json." + ending), ending.toUtf8() + text);
        }
        EXPECT_EQ(folder.Read("s.json.broken"), QByteArray("broken") + text) << "the first one stays";
        EXPECT_TRUE(file.Write({{"a", 1}}));
        EXPECT_EQ(file.Read()["a"].toInt(), 1);
    }
    // A place where nothing can be written is told of once.
    const AppFolder folder;
    folder.Write("file", "");
    int notes = 0;
    StateFile file(folder.Path("file/s.json"), [&](const QString&) { ++notes; });
    EXPECT_TRUE(file.Read().isEmpty());
    EXPECT_FALSE(file.Write({{"a", 1}}));
    EXPECT_FALSE(file.Write({{"a", 2}}));
    EXPECT_EQ(notes, 1);
    QFile::remove(folder.Path("file"));
    EXPECT_TRUE(file.Write({{"a", 3}})) << "the place is good again";
}

} // namespace
} // namespace corvane::desktop
