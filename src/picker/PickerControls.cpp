#include "picker/PickerControls.h"

#include "picker/BWWickTableView.h"
#include "picker/BWWickWindow.h"
#include "picker/EntryDelegate.h"
#include "picker/PickerGeometry.h"

#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>

namespace brimwick {

namespace {

constexpr int margin = 14;
constexpr int captionWidth = 52;
constexpr int captionGap = 8;
/// The strip at the bottom that holds the buttons.
constexpr int buttonStrip = 52;
constexpr int promptHeight = 40;
constexpr int selectedFileRowHeight = 26;

const char* const showInFileManager = "Show in File Manager";

} // namespace

PickerControls::PickerControls(BWWickWindow& window)
    : wickWindow(&window), selectedFoldersBox(new QGroupBox(&window)),
      selectedFilesTableView(new BWWickTableView(selectedFoldersBox)),
      searchFieldCaption(new QLabel(&window)), searchField(new QLineEdit(&window)),
      searchResultsTableView(new BWWickTableView(&window)), typeTheNameMessage(new QWidget(&window)),
      typeTheNameMessageText(new QLabel(typeTheNameMessage)),
      wickWindowCloseButton(new QPushButton("Close", &window)),
      wickWindowShowInFinderButton(new QPushButton(showInFileManager, &window)),
      wickWindowMoveButton(new QPushButton(&window)), wickWindowCurtain(new QLabel(&window)) {
    searchFieldCaption->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    searchFieldCaption->setBuddy(searchField);
    searchField->setClearButtonEnabled(true);
    searchField->setPlaceholderText("Search");
    typeTheNameMessageText->setAlignment(Qt::AlignCenter);
    typeTheNameMessageText->setWordWrap(true);
    typeTheNameMessageText->setForegroundRole(QPalette::PlaceholderText);
    typeTheNameMessage->setAttribute(Qt::WA_TransparentForMouseEvents);
    for (QPushButton* button : {wickWindowCloseButton, wickWindowShowInFinderButton, wickWindowMoveButton})
        button->setAutoDefault(false);
    wickWindowMoveButton->setDefault(true);

    wickWindowCurtain->setAlignment(Qt::AlignCenter);
    wickWindowCurtain->setText("Initializing Index...");
    wickWindowCurtain->setAutoFillBackground(true);
    QPalette curtain = wickWindowCurtain->palette();
    QColor veil = curtain.color(QPalette::Window);
    veil.setAlphaF(0.5F);
    curtain.setColor(QPalette::Window, veil);
    wickWindowCurtain->setPalette(curtain);

    buildTables();
    buildMenus();
    nameForAssistance();
    orderForTab();
}

void PickerControls::buildTables() const {
    searchResultsTableView->setRowHeight(EntryDelegate::rowHeight);
    searchResultsTableView->setItemDelegate(new EntryDelegate(searchResultsTableView));
    selectedFilesTableView->setRowHeight(selectedFileRowHeight);
    selectedFilesTableView->setFrameShape(QFrame::NoFrame);
    selectedFilesTableView->viewport()->setAutoFillBackground(false);
}

void PickerControls::buildMenus() {
    wickContextMenu = new QMenu(wickWindow);
    wickContextMenuMoveFileMenuItem = wickContextMenu->addAction("Move File Here");
    wickContextMenuShowInFinderMenuItem = wickContextMenu->addAction(showInFileManager);
    selectedFilesContextMenu = new QMenu(wickWindow);
    selectedFilesContextMenuShowInFinderMenuItem = selectedFilesContextMenu->addAction(showInFileManager);
    searchResultsTableView->setMenu(wickContextMenu);
    selectedFilesTableView->setMenu(selectedFilesContextMenu);
}

void PickerControls::nameForAssistance() const {
    searchField->setAccessibleName("Folder name");
    searchResultsTableView->setAccessibleName("Folders found");
    selectedFilesTableView->setAccessibleName("Selected files");
    wickWindowCurtain->setAccessibleName("Initializing Index...");
}

void PickerControls::orderForTab() const {
    QWidget* previous = searchField;
    for (QWidget* next : std::initializer_list<QWidget*>{searchResultsTableView, wickWindowMoveButton,
                                                         wickWindowShowInFinderButton, wickWindowCloseButton,
                                                         selectedFilesTableView}) {
        QWidget::setTabOrder(previous, next);
        previous = next;
    }
}

void PickerControls::layOut(Mode mode) const {
    const int width = wickWindow->width();
    const int height = wickWindow->height();
    // The numbers count from below and know a title bar of their own.
    const PickerGeometry geometry = pickerGeometryAtHeight(mode, height + PickerGeometry::titleBarHeight);
    const auto place = [height](QWidget* widget, int x, int y, int w, int h) {
        widget->setGeometry(x, height - y - h, w, h);
    };

    const int fieldHeight = searchField->sizeHint().height();
    const int fieldX = margin + captionWidth + captionGap;
    place(searchFieldCaption, margin, geometry.searchFieldY, captionWidth, fieldHeight);
    place(searchField, fieldX, geometry.searchFieldY, width - fieldX - margin, fieldHeight);
    place(searchResultsTableView, margin, buttonStrip, width - 2 * margin, geometry.searchResultsHeight);
    place(typeTheNameMessage, 2 * margin, geometry.typeTheNameMessageY, width - 4 * margin, promptHeight);
    typeTheNameMessageText->setGeometry(typeTheNameMessage->rect());
    typeTheNameMessage->raise();

    const int boxY = geometry.searchFieldY + fieldHeight + margin / 2;
    place(selectedFoldersBox, margin, boxY, width - 2 * margin, height - boxY - margin / 2);
    selectedFilesTableView->setGeometry(selectedFoldersBox->contentsRect().marginsRemoved({4, 4, 4, 4}));

    const int buttonHeight = wickWindowMoveButton->sizeHint().height();
    const int buttonY = (buttonStrip - buttonHeight) / 2;
    int right = width - margin;
    for (QPushButton* button : {wickWindowMoveButton, wickWindowShowInFinderButton}) {
        const int buttonWidth = button->sizeHint().width() + margin;
        place(button, right - buttonWidth, buttonY, buttonWidth, buttonHeight);
        right -= buttonWidth + margin / 2;
    }
    place(wickWindowCloseButton, margin, buttonY, wickWindowCloseButton->sizeHint().width() + margin,
          buttonHeight);

    wickWindowCurtain->setGeometry(wickWindow->rect());
    wickWindowCurtain->raise();
}

} // namespace brimwick
