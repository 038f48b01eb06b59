#include "desktop/platform/FileDialogs.h"

#include "tests/desktop/AppFolder.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

namespace corvane::desktop {
namespace {

TEST(FileDialogs, OfferAllFilesBesideThoseOfAFilter) {
    for (const auto& [filter, expected] :
         {std::pair("Data (*.csv)|*.csv;*.txt", "Data (*.csv *.txt)|All files (*)"),
          std::pair("Data|*.csv|Everything|*", "Data (*.csv)|Everything (*)"), std::pair("", "All files (*)")})
        EXPECT_EQ(FiltersOf(filter).join('|').toStdString(), expected);
}

class FileDialogsTest : public ::testing::Test {
protected:
    FileDialogsTest() {
        QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
        m_folder.Write("data/old.csv", "1");
        m_folder.Write("other/any.txt", "2");
    }
    [[nodiscard]] StateFile State() const { return {m_folder.Path("folders.json"), {}}; }

    // Answers in turn: a name in the dialog for a file, the text of a button in the question, nothing to cancel.
    QString Ask(FileDialogs& dialogs, const QString& title, const QString& proposed, QStringList answers) {
        m_seen.clear();
        QTimer user;
        QObject::connect(&user, &QTimer::timeout, [&] {
            QWidget* open = QApplication::activeModalWidget();
            if (!open || !open->isVisible())
                return;
            auto* files = qobject_cast<QFileDialog*>(open);
            auto* name = files ? files->findChild<QLineEdit*>("fileNameEdit") : nullptr;
            if (name && !name->hasFocus()) { // only what is typed with the focus takes the list's selection away
                files->activateWindow();
                return name->setFocus();
            }
            const QString answer = answers.isEmpty() ? QString() : answers.takeFirst();
            if (files) {
                m_seen += QFileInfo(files->directory().path()).fileName() + "/" + name->text() + " ";
                if (answer.isEmpty())
                    return files->reject();
                name->setText(answer);
                QMetaObject::invokeMethod(files, "accept", Qt::DirectConnection);
            } else if (auto* box = qobject_cast<QMessageBox*>(open)) {
                m_seen += "question ";
                for (auto* button : box->buttons())
                    if (button->text().remove('&') == answer)
                        return button->click();
                box->reject();
            }
        });
        user.start(5);
        return title == "Folder" ? dialogs.AskFolder(nullptr, title, proposed)
                                 : dialogs.AskSave(nullptr, title, "Data|*.csv", proposed);
    }

    AppFolder m_folder;
    QString m_seen;
};

TEST_F(FileDialogsTest, AskBeforeAFileIsReplacedUnderItsWholeName) {
    struct Case {
        QStringList answers;
        const char* chosen; // in the folder of the proposal
        const char* seen;
    };
    FileDialogs dialogs(State());
    for (const Case& each :
         {Case{{"new"}, "new.csv", "data/p.csv "}, Case{{"old", "Replace"}, "old.csv", "data/p.csv question "},
          Case{{"old", "Choose Another Name", "new"}, "new.csv", "data/p.csv question data/old "},
          Case{{"old", "Choose Another Name"}, "", "data/p.csv question data/old "}, Case{{}, "", "data/p.csv "}}) {
        const QString chosen = Ask(dialogs, "Export", m_folder.Path("data/p.csv"), each.answers);
        EXPECT_EQ(chosen, *each.chosen ? m_folder.Path(QString("data/") + each.chosen) : QString());
        EXPECT_EQ(m_seen.toStdString(), each.seen);
    }
}

TEST_F(FileDialogsTest, RememberTheFolderOfEachPurposeForTheNextStart) {
    {
        FileDialogs dialogs(State());
        (void)Ask(dialogs, "Export", m_folder.Path("data/p.csv"), {m_folder.Path("data/y.csv")});
        EXPECT_EQ(Ask(dialogs, "Export", m_folder.Path("data/p.csv"), {m_folder.Path("other/x.csv")}),
                  m_folder.Path("other/x.csv"));
    }
    FileDialogs dialogs(State());
    (void)Ask(dialogs, "Export", m_folder.Path("data/p.csv"), {});
    EXPECT_EQ(m_seen.toStdString(), "other/p.csv ");
    (void)Ask(dialogs, "Save Report", m_folder.Path("data/r.csv"), {});
    EXPECT_EQ(m_seen.toStdString(), "data/r.csv ") << "another purpose";
    EXPECT_EQ(Ask(dialogs, "Folder", m_folder.Path("data"), {m_folder.Path("other")}), m_folder.Path("other"));
    (void)Ask(dialogs, "Folder", m_folder.Path("data"), {});
    EXPECT_TRUE(m_seen.startsWith("other/")) << m_seen.toStdString();
    QDir(m_folder.Path("other")).removeRecursively();
    (void)Ask(dialogs, "Export", m_folder.Path("data/p.csv"), {});
    EXPECT_EQ(m_seen.toStdString(), "data/p.csv ") << "it has gone";
}

} // namespace
} // namespace corvane::desktop
