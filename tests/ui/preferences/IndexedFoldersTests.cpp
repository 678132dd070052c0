#include "model/PathText.h"
#include "preferences/ChosenFolder.h"
#include "ui/support/PreferencesTest.h"

#include <QCheckBox>
#include <QContextMenuEvent>
#include <QDropEvent>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QMessageBox>
#include <QMimeData>
#include <QPointer>
#include <QPushButton>
#include <QTimer>

#include <gmock/gmock.h>

namespace brimwick {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Paths = std::vector<std::string>;

} // namespace

/// The list of indexed folders in the preferences window of the whole program.
class IndexedFolders : public PreferencesTest {
  protected:
    void startWith(const Paths& folders) {
        for (const char* name : {"x/Projects/Web", "y/Docs", "y/Documents", "z"}) home.makeFolder(name);
        storePreferences(folders);
        start();
        showPreferences();
    }
    BWPreferencesTableView& table() { return *shown().indexedFoldersTableView; }

    /// Chooses in the panel as a user does who types the path.
    void add(const std::string& path) {
        shown().plusButton->click();
        auto* const panel = preferences().preferencesWindow().findChild<QFileDialog*>();
        ASSERT_NE(panel, nullptr);
        EXPECT_TRUE(panel->isVisible());
        EXPECT_EQ(panel->labelText(QFileDialog::Accept), "Select");
        panel->setDirectory(QFile::decodeName(parentPath(path).c_str()));
        panel->selectFile(QFile::decodeName(path.c_str()));
        const QPointer<QFileDialog> lives = panel;
        static_cast<QDialog*>(panel)->accept();
        EXPECT_FALSE(lives.isNull()) << "it was in its own handler";
        letThePanelEnd();
    }
    static void letThePanelEnd() { QCoreApplication::sendPostedEvents(nullptr, QEvent::MetaCall); }
    /// The same, where an alert comes; its texts.
    std::pair<QString, QString> addAndBeRefused(const std::string& path) {
        std::pair<QString, QString> texts;
        QTimer answer;
        QObject::connect(&answer, &QTimer::timeout, &answer, [&texts] {
            auto* const alert = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (alert == nullptr) return;
            EXPECT_EQ(alert->windowTitle(), "Brimwick");
            texts = {alert->text(), alert->informativeText()};
            alert->accept();
        });
        answer.start(10);
        add(path);
        return texts;
    }
    Paths listed() {
        Paths paths;
        for (const auto& folder : brimwick->model().folderIndexer().indexedFolders())
            paths.push_back(folder.path());
        return paths;
    }
    Paths saved() const {
        const std::vector<BWSelectedFileOrFolder> none;
        PreferencesStore store(supportFolder(), Resources(BRIMWICK_RESOURCES), none);
        store.loadPreferences();
        return store.indexedFolderPaths();
    }
    bool changed() { return brimwick->model().indexRebuilder().indexedFoldersHaveChanged(); }
    void expectRebuildIsForced() {
        EXPECT_TRUE(shown().rebuildIndexCheckBox->isChecked());
        EXPECT_FALSE(shown().rebuildIndexCheckBox->isEnabled());
        EXPECT_TRUE(changed());
    }
    std::vector<std::string> told() {
        std::vector<std::string> texts;
        for (const std::string& text : notifications.texts()) texts.push_back(text);
        return texts;
    }
};

TEST_F(IndexedFolders, AnAddedOneIsSavedBeforeTheListIsSorted) {
    startWith({home / "z"});
    add(home / "y/Docs");
    EXPECT_THAT(saved(), ElementsAre(home / "z", home / "y/Docs"));
    EXPECT_THAT(listed(), ElementsAre(home / "y/Docs", home / "z"));
    EXPECT_EQ(table().item(0)->text().toStdString(), home / "y/Docs");
    expectRebuildIsForced();
    EXPECT_EQ(focusedIndex(), 2);
}

TEST_F(IndexedFolders, ASubfolderOfOneIsRefusedAndSoIsTheSameAgain) {
    startWith({home / "x/Projects"});
    for (const std::string& path : {home / "x/Projects/Web", home / "x/Projects"}) {
        const auto [text, more] = addAndBeRefused(path);
        EXPECT_EQ(text, "Subfolder Not Allowed");
        EXPECT_EQ(more.toStdString(),
                  "Because the folder you selected is a subfolder of another indexed folder, it will "
                  "automatically be indexed when the other folder is indexed. Therefore it will not be "
                  "separately added to the list of indexed folders.");
    }
    EXPECT_THAT(listed(), ElementsAre(home / "x/Projects"));
    EXPECT_FALSE(changed());
    EXPECT_TRUE(shown().rebuildIndexCheckBox->isEnabled());
}

TEST_F(IndexedFolders, AnyPathThatContainsAListedOneIsRefused) {
    startWith({home / "y/Doc"});
    EXPECT_EQ(addAndBeRefused(home / "y/Documents").first, "Subfolder Not Allowed");
    EXPECT_THAT(listed(), ElementsAre(home / "y/Doc"));
}

TEST_F(IndexedFolders, AFolderAboveAListedOneIsAddedAndBothStay) {
    startWith({home / "x/Projects/Web"});
    add(home / "x/Projects");
    EXPECT_THAT(listed(), testing::UnorderedElementsAre(home / "x/Projects", home / "x/Projects/Web"));
}

TEST_F(IndexedFolders, AfterAChangeARefusedFolderStillSaves) {
    startWith({home / "z"});
    add(home / "y/Docs");
    addAndBeRefused(home / "z");
    EXPECT_THAT(saved(), ElementsAre(home / "y/Docs", home / "z"));
}

TEST_F(IndexedFolders, NothingChangesWhenThePanelIsCancelled) {
    startWith({home / "z"});
    shown().plusButton->click();
    auto* const panel = preferences().preferencesWindow().findChild<QFileDialog*>();
    ASSERT_NE(panel, nullptr);
    panel->reject();
    letThePanelEnd();
    EXPECT_THAT(listed(), ElementsAre(home / "z"));
    EXPECT_FALSE(changed());
}

TEST_F(IndexedFolders, OfNamesThatAreNoUtf8AreFoundAgainByHowTheyLook) {
    const std::string odd = home / "odd \xff\xfe/in\xfdside";
    std::filesystem::create_directories(odd);
    EXPECT_EQ(exactPathOfShown(QFile::decodeName(odd.c_str())), odd);
    EXPECT_EQ(exactPathOfShown(QFile::decodeName(home.path().c_str())), home.path());
    EXPECT_EQ(exactPathOfShown("/no/such/folder"), "/no/such/folder");
    startWith({odd});
    preferences().indexedFolders().addTrashFolderButtonWasPressed();
    EXPECT_THAT(saved(), ElementsAre(odd, home / ".Trash"));
}

TEST_F(IndexedFolders, WithoutTheLastTheListIsEmptyAndChanged) {
    startWith({home / "z"});
    table().selectRow(0);
    EXPECT_TRUE(shown().minusButton->isEnabled());
    shown().minusButton->click();
    EXPECT_THAT(listed(), IsEmpty());
    EXPECT_THAT(saved(), IsEmpty());
    EXPECT_EQ(table().count(), 0);
    EXPECT_FALSE(shown().minusButton->isEnabled());
    EXPECT_FALSE(shown().showInFinderButton->isEnabled());
    expectRebuildIsForced();
    EXPECT_EQ(focusedIndex(), 2);
}

TEST_F(IndexedFolders, CannotBeRemovedOrShownWhereThereAreNoneOrNoneIsSelected) {
    startWith({});
    EXPECT_FALSE(shown().minusButton->isEnabled());
    EXPECT_FALSE(shown().showInFinderButton->isEnabled());
    EXPECT_FALSE(shown().preferencesContextMenuRemoveFolderMenuItem->isEnabled());
    EXPECT_FALSE(shown().preferencesContextMenuShowInFinderMenuItem->isEnabled());
    preferences().indexedFolders().removeIndexedFolder();
    EXPECT_EQ(told().back(), "No indexed folders are present in the list.");
    add(home / "z");
    table().clearSelection();
    preferences().indexedFolders().showIndexedFolderInFinder();
    EXPECT_EQ(told().back(), "No indexed folders are selected in the list.");
    EXPECT_THAT(sounds.played, ElementsAre("Basso.aiff", "Basso.aiff"));
    EXPECT_THAT(fileManager.opened, IsEmpty());
}

TEST_F(IndexedFolders, AreShownInTheFileManagerWithASound) {
    startWith({home / "y/Docs", home / "z"});
    table().selectRow(1);
    shown().showInFinderButton->click();
    EXPECT_THAT(fileManager.opened, ElementsAre(fileUrlWithPath(home / "z", true)));
    EXPECT_EQ(sounds.played.size(), 1U);
    EXPECT_EQ(focusedIndex(), 2);
    emit table().itemDoubleClicked(table().item(1));
    EXPECT_EQ(fileManager.opened.size(), 2U);
}

TEST_F(IndexedFolders, TheTrashIsAddedOnceAndSelected) {
    startWith({home.path()});
    EXPECT_TRUE(shown().addTrashFolderButton->isEnabled());
    shown().addTrashFolderButton->click();
    EXPECT_THAT(listed(), ElementsAre(home.path(), home / ".Trash"));
    EXPECT_THAT(saved(), ElementsAre(home.path(), home / ".Trash"));
    EXPECT_EQ(table().selectedRow(), 1);
    EXPECT_EQ(table().item(1)->text(), "Trash");
    EXPECT_FALSE(shown().addTrashFolderButton->isEnabled());
    expectRebuildIsForced();
    preferences().indexedFolders().addTrashFolderButtonWasPressed();
    EXPECT_EQ(told().back(), "Can't add more than one Trash folder.");
    EXPECT_THAT(sounds.played, ElementsAre("Basso.aiff"));
    EXPECT_EQ(listed().size(), 2U);
}

TEST_F(IndexedFolders, AreSelectedByARightClickBeforeTheMenuOpens) {
    startWith({home / "y/Docs", home / "z"});
    const auto rightClick = [this](const QPoint& point) {
        QContextMenuEvent event(QContextMenuEvent::Mouse, point, table().viewport()->mapToGlobal(point));
        QApplication::sendEvent(table().viewport(), &event);
        EXPECT_TRUE(table().menu().isVisible());
        table().menu().close();
    };
    rightClick(table().visualItemRect(table().item(1)).center());
    EXPECT_EQ(table().selectedRow(), 1);
    EXPECT_TRUE(shown().preferencesContextMenuRemoveFolderMenuItem->isEnabled());
    rightClick({5, table().viewport()->height() - 2});
    EXPECT_EQ(table().selectedRow(), 1) << "below the last row the selection stays";
}

TEST_F(IndexedFolders, AreIndexedWhenTheWindowClosesAfterAChange) {
    for (const bool byTitleBar : {false, true}) {
        startWith({home / "z"});
        add(home / "y");
        if (byTitleBar)
            preferences().preferencesWindow().close();
        else
            shown().preferencesWindowCloseButton->click();
        EXPECT_TRUE(preferences().isInPhantomMode());
        EXPECT_TRUE(brimwick->model().indexRebuilder().indexIsRebuilding());
        ASSERT_TRUE(mainLoop.runNext());
        EXPECT_FALSE(changed());
        EXPECT_EQ(brimwick->model().folderIndexer().index()->size(), 4U);
        showPreferences();
        EXPECT_FALSE(shown().rebuildIndexCheckBox->isChecked());
        EXPECT_TRUE(shown().rebuildIndexCheckBox->isEnabled());
        brimwick.reset();
    }
}

TEST_F(IndexedFolders, AreIndexedAnewWhenTheBoxIsTickedAndNotWhenItIsUntickedAgain) {
    startWith({home / "z"});
    shown().rebuildIndexCheckBox->click();
    EXPECT_TRUE(changed());
    shown().rebuildIndexCheckBox->click();
    EXPECT_FALSE(changed());
    preferences().hidePreferences();
    EXPECT_FALSE(brimwick->model().indexRebuilder().indexIsRebuilding());
    showPreferences();
    shown().rebuildIndexCheckBox->click();
    preferences().hidePreferences();
    EXPECT_TRUE(brimwick->model().indexRebuilder().indexIsRebuilding());
    EXPECT_FALSE(shown().indexedFoldersCurtain->isVisible());
    showPreferences();
    EXPECT_TRUE(shown().indexedFoldersCurtain->isVisible());
    shown().addTrashFolderButton->setEnabled(false);
    preferences().enableDisablePreferencesWindowControls();
    EXPECT_FALSE(shown().addTrashFolderButton->isEnabled()) << "nothing changes while the index is rebuilt";
    ASSERT_TRUE(mainLoop.runNext());
    EXPECT_FALSE(shown().indexedFoldersCurtain->isVisible());
    EXPECT_TRUE(shown().addTrashFolderButton->isEnabled());
}

TEST_F(IndexedFolders, AreNotIndexedAnewWhenTheBoxIsUntickedEvenAfterAChange) {
    startWith({home / "z"});
    add(home / "y/Docs");
    shown().rebuildIndexCheckBox->setEnabled(true);
    shown().rebuildIndexCheckBox->click();
    EXPECT_FALSE(changed());
    preferences().hidePreferences();
    EXPECT_FALSE(brimwick->model().indexRebuilder().indexIsRebuilding());
}

TEST_F(IndexedFolders, DoNotOfferTheTrashWhenItIsAmongThem) {
    home.makeFolder(".Trash");
    startWith({home / ".Trash", home / "z"});
    EXPECT_FALSE(shown().addTrashFolderButton->isEnabled());
    EXPECT_EQ(table().item(0)->text(), "Trash");
}

TEST_F(IndexedFolders, AreManyWithoutALookAtEachForTheRestart) {
    Paths folders;
    for (int number = 0; number < 10'000; ++number)
        folders.push_back(home / ("many/" + std::to_string(number)));
    startWith(folders);
    EXPECT_EQ(table().count(), 10'000);
    EXPECT_FALSE(shown().restartOffer->isVisible());
    EXPECT_EQ(table().item(9'999)->text(), QString::fromStdString(listed().back()));
}

TEST_F(IndexedFolders, ThatWereAddedWhileTheIndexWasMadeAreIndexedNext) {
    for (const bool closedBefore : {true, false}) {
        startWith({home / "z"});
        shown().rebuildIndexCheckBox->click();
        preferences().hidePreferences();
        showPreferences();
        add(home / "y");
        if (closedBefore) preferences().hidePreferences();
        ASSERT_TRUE(mainLoop.runNext());
        if (!closedBefore) preferences().hidePreferences();
        ASSERT_TRUE(mainLoop.runNext());
        EXPECT_EQ(brimwick->model().folderIndexer().index()->size(), 4U);
        brimwick.reset();
    }
}

TEST_F(IndexedFolders, AreAddedWhenTheyAreDroppedOnTheListByTheSameRules) {
    startWith({home / "x/Projects"});
    const std::string odd = home / "odd \xff\n";
    std::filesystem::create_directories(odd);
    const std::string file = home.makeFile("file", "");
    QMimeData dropped;
    QByteArray urls;
    for (const std::string& path : {odd, file, home / "x/Projects/Web", home / "y/Docs", home / "gone"})
        urls += QByteArray::fromStdString(fileUrlWithPath(path, false)) + "\r\n";
    dropped.setData("text/uri-list", urls);
    QTimer answer;
    int alerts = 0;
    QObject::connect(&answer, &QTimer::timeout, &answer, [&alerts] {
        auto* const alert = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (alert == nullptr) return;
        EXPECT_EQ(alert->text(), "Subfolder Not Allowed");
        ++alerts;
        alert->accept();
    });
    answer.start(10);
    QDragEnterEvent enter({5, 5}, Qt::CopyAction | Qt::MoveAction, &dropped, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(table().viewport(), &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop({5, 5}, Qt::CopyAction | Qt::MoveAction, &dropped, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(table().viewport(), &drop);
    EXPECT_TRUE(drop.isAccepted());
    EXPECT_EQ(drop.dropAction(), Qt::CopyAction) << "the folders stay where they are";
    EXPECT_EQ(listed().size(), 1U) << "the drop is over before anything is asked";
    QCoreApplication::sendPostedEvents(nullptr, QEvent::MetaCall);
    EXPECT_EQ(alerts, 1);
    EXPECT_THAT(saved(), ElementsAre(home / "x/Projects", odd, home / "y/Docs"));
    EXPECT_EQ(focusedIndex(), 2);
    EXPECT_EQ(table().item(table().selectedRow())->text().toStdString(), home / "y/Docs");
    EXPECT_THAT(told(), ElementsAre("\"" + file + "\" is not a folder that can be indexed.",
                                    "\"" + (home / "gone") + "\" is not a folder that can be indexed."));
    expectRebuildIsForced();
}

TEST_F(IndexedFolders, AreNotTakenFromADropOfText) {
    startWith({home / "z"});
    QMimeData text;
    text.setText("/etc");
    QDragEnterEvent drag({5, 5}, Qt::CopyAction, &text, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(table().viewport(), &drag);
    EXPECT_FALSE(drag.isAccepted());
}

TEST_F(IndexedFolders, ThatAreNotWatchedYetComeWithAnOfferToRestart) {
    startWith({home / "z"});
    EXPECT_FALSE(shown().restartOffer->isVisible());
    add(home / "y/Docs");
    EXPECT_TRUE(shown().restartOffer->isVisible());
    preferences().hidePreferences();
    ASSERT_TRUE(mainLoop.runNext());
    showPreferences();
    EXPECT_TRUE(shown().restartOffer->isVisible()) << "they are indexed now, but not watched";
    table().selectRow(0);
    shown().minusButton->click();
    EXPECT_FALSE(shown().restartOffer->isVisible());
    table().selectRow(0);
    shown().minusButton->click();
    add(home / "z");
    EXPECT_FALSE(shown().restartOffer->isVisible()) << "it has been watched since the start";
    table().selectRow(0);
    shown().minusButton->click();
    add(home.makeFolder("z/deeper"));
    EXPECT_FALSE(shown().restartOffer->isVisible()) << "so has what lies in it";
    add(home.makeFolder("zebra"));
    EXPECT_TRUE(shown().restartOffer->isVisible());
}

TEST_F(IndexedFolders, StayAsTheyAreWhenAMnemonicClicksAfterTheWindowWentAway) {
    startWith({home / "z"});
    preferences().hidePreferences();
    table().selectRow(0);
    for (QAbstractButton* const button :
         std::initializer_list<QAbstractButton*>{shown().plusButton, shown().minusButton,
                                                 shown().addTrashFolderButton, shown().rebuildIndexCheckBox})
        button->click();
    EXPECT_THAT(listed(), ElementsAre(home / "z"));
    EXPECT_FALSE(changed());
    EXPECT_EQ(preferences().preferencesWindow().findChild<QFileDialog*>(), nullptr);
}

TEST_F(IndexedFolders, TakeNoMoreOfADropOnceTheWindowIsHidden) {
    startWith({home / "z"});
    QTimer answer;
    QObject::connect(&answer, &QTimer::timeout, &answer, [this] {
        auto* const alert = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (alert == nullptr) return;
        preferences().hidePreferences();
        alert->accept();
    });
    answer.start(10);
    preferences().indexedFolders().addIndexedFolders({home / "z", home / "y"});
    EXPECT_THAT(listed(), ElementsAre(home / "z"));
    EXPECT_FALSE(changed());
}

TEST_F(IndexedFolders, OutliveAMessageOfThePanelWhenAHotKeyPutsTheWindowAway) {
    startWith({home / "z"});
    shown().plusButton->click();
    auto* const panel = preferences().preferencesWindow().findChild<QFileDialog*>();
    ASSERT_NE(panel, nullptr);
    const QPointer<QFileDialog> lives = panel;
    bool wasThere = false;
    QTimer hotKey;
    QObject::connect(&hotKey, &QTimer::timeout, &hotKey, [&] {
        if (QApplication::activeModalWidget() == panel || QApplication::activeModalWidget() == nullptr)
            return;
        hotKey.stop();
        preferences().hidePreferences();
        // The loop of the message goes on for a while.
        QApplication::processEvents();
        wasThere = !lives.isNull();
    });
    hotKey.start(10);
    panel->selectFile("no such folder");
    static_cast<QDialog*>(panel)->accept();
    EXPECT_TRUE(wasThere) << "it was in its own handler";
    QElapsedTimer waited;
    waited.start();
    while (!lives.isNull() && waited.elapsed() < 5000) QApplication::processEvents(QEventLoop::AllEvents, 50);
    EXPECT_TRUE(lives.isNull());
    EXPECT_TRUE(preferences().isInPhantomMode());
}

TEST_F(IndexedFolders, AreAskedForAtAStartWithoutAny) {
    for (const bool some : {true, false}) {
        storePreferences(some ? Paths{home.makeFolder("some")} : Paths{});
        start();
        EXPECT_EQ(preferences().isInPhantomMode(), some);
        brimwick.reset();
    }
}

TEST_F(IndexedFolders, AreNotAskedForAnyMoreOnceTheWindowIsHidden) {
    startWith({home / "z"});
    shown().plusButton->click();
    const QPointer<QFileDialog> panel = preferences().preferencesWindow().findChild<QFileDialog*>();
    ASSERT_FALSE(panel.isNull());
    preferences().hidePreferences();
    EXPECT_FALSE(panel && panel->isVisible());
    EXPECT_TRUE(preferences().isInPhantomMode());
    EXPECT_THAT(listed(), ElementsAre(home / "z"));
}

} // namespace brimwick
