#include "desktop/state/StateFile.h"

#include "tests/desktop/AppFolder.h"

#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QThread>
#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

namespace corvane::desktop {
namespace {

TEST(StateFile, WriterThatIsKilledLosesNothingButItsLastChange) {
    const QTemporaryDir oFolder;
    const QString sPath = oFolder.filePath("state.json");
    int nKept = 0;
    for (int iKill = 0; iKill < 200; ++iKill) {
        int aPipe[2];
        ASSERT_EQ(::pipe(aPipe), 0);
        const pid_t nChild = ::fork();
        if (nChild == 0) {
            StateFile oFile(sPath, {});
            for (int i = nKept + 1;; ++i)
                if (!oFile.Write({{"n", i}, {"filling", QString(3000, 'x')}}) ||
                    ::write(aPipe[1], &i, sizeof i) != static_cast<ssize_t>(sizeof i))
                    ::_exit(1);
        }
        ::close(aPipe[1]);
        QThread::usleep(500U + QRandomGenerator::global()->bounded(6000U));
        ::kill(nChild, SIGKILL);
        ::waitpid(nChild, nullptr, 0);
        int nTold = nKept;
        for (int i = 0; ::read(aPipe[0], &i, sizeof i) == static_cast<ssize_t>(sizeof i);)
            nTold = i;
        ::close(aPipe[0]);
        QString sNote;
        const int nRead = StateFile(sPath, [&](const QString& s) { sNote = s; }).Read()["n"].toInt();
        ASSERT_EQ(sNote, "");
        ASSERT_TRUE(nRead == nTold || nRead == nTold + 1) << nRead << " was read, " << nTold << " was written";
        nKept = nRead;
    }
    EXPECT_GT(nKept, 20) << "the child was killed before it wrote";
}

TEST(StateFile, DamagedFileCostsOnlyItselfAndIsToldOf) {
    for (const char* sText : {"", "[1]", "{\"a\":", "\xff\xfe", "null"}) {
        const AppFolder oFolder;
        oFolder.Write("s.json", sText);
        QStringList aNotes;
        StateFile oFile(oFolder.Path("s.json"), [&](const QString& s) { aNotes.append(s); });
        EXPECT_TRUE(oFile.Read().isEmpty()) << sText;
        EXPECT_EQ(aNotes.size(), 1) << sText;
        EXPECT_EQ(oFolder.Read("s.json.broken"), sText);
        EXPECT_TRUE(oFile.Write({{"a", 1}}));
        EXPECT_EQ(oFile.Read()["a"].toInt(), 1);
    }
    // A place where nothing can be written is told of once.
    const AppFolder oFolder;
    oFolder.Write("file", "");
    int nNotes = 0;
    StateFile oFile(oFolder.Path("file/s.json"), [&](const QString&) { ++nNotes; });
    EXPECT_TRUE(oFile.Read().isEmpty());
    EXPECT_FALSE(oFile.Write({{"a", 1}}));
    EXPECT_FALSE(oFile.Write({{"a", 2}}));
    EXPECT_EQ(nNotes, 1);
}

} // namespace
} // namespace corvane::desktop
