#include "ui/support/PreferencesTest.h"

#include <QAbstractButton>
#include <QLabel>
#include <QTabWidget>

namespace brimwick {

namespace {

/// The preferences window with texts that take more room.
class PreferencesTextSizes : public PreferencesTest {
  protected:
    PreferencesTextSizes() : font_(QApplication::font()) {}
    ~PreferencesTextSizes() override { QApplication::setFont(font_); }

    void setFontSize(double factor) {
        QFont larger = font_;
        larger.setPointSizeF(larger.pointSizeF() * factor);
        QApplication::setFont(larger);
    }
    /// As long as translations into German are: a third more, or half more where there is little.
    void lengthenTexts() {
        const auto longer = [](const QString& text) {
            return text.isEmpty() ? text : text + QString(text.size() / (text.size() < 20 ? 2 : 3), u'n');
        };
        for (auto* const button : window().findChildren<QAbstractButton*>())
            button->setText(longer(button->text()));
        for (auto* const label : window().findChildren<QLabel*>()) label->setText(longer(label->text()));
        QTabWidget* const tabs = shown().preferencesWindowTabView;
        for (int tab = 0; tab < tabs->count(); ++tab) tabs->setTabText(tab, longer(tabs->tabText(tab)));
        window().adjustSize();
        QApplication::processEvents();
    }
    void expectThatNothingIsCutOffInEitherTab() {
        for (int tab = 0; tab < shown().preferencesWindowTabView->count(); ++tab) {
            shown().preferencesWindowTabView->setCurrentIndex(tab);
            QApplication::processEvents();
            expectThatNothingIsCutOff();
        }
    }

  private:
    void expectThatNothingIsCutOff() {
        int seen = 0;
        for (const auto* const widget : window().findChildren<QWidget*>()) {
            const auto* const label = qobject_cast<const QLabel*>(widget);
            const auto* const button = qobject_cast<const QAbstractButton*>(widget);
            if (!widget->isVisible() || (label == nullptr && button == nullptr)) continue;
            const QString text = label != nullptr ? label->text() : button->text();
            if (text.isEmpty()) continue;
            ++seen;
            if (label != nullptr && label->wordWrap()) {
                EXPECT_GE(label->height(), label->heightForWidth(label->width())) << text.toStdString();
            } else {
                EXPECT_GE(widget->width(), widget->minimumSizeHint().width()) << text.toStdString();
                EXPECT_GE(widget->height(), widget->minimumSizeHint().height()) << text.toStdString();
            }
            const QRect place(widget->mapTo(&window(), QPoint()), widget->size());
            EXPECT_TRUE(window().rect().contains(place)) << text.toStdString();
        }
        EXPECT_GT(seen, 8);
    }

    QFont font_;
};

TEST_F(PreferencesTextSizes, AreNotCutOffAsTheyAre) {
    start();
    showPreferences();
    expectThatNothingIsCutOffInEitherTab();
}

TEST_F(PreferencesTextSizes, AreNotCutOffWhenTheyAreAQuarterLarger) {
    setFontSize(1.25);
    start();
    showPreferences();
    expectThatNothingIsCutOffInEitherTab();
}

TEST_F(PreferencesTextSizes, AreNotCutOffWhenTheyAreAsLongAsGerman) {
    setFontSize(1.25);
    start();
    showPreferences();
    lengthenTexts();
    expectThatNothingIsCutOffInEitherTab();
}

TEST_F(PreferencesTextSizes, LeaveRoomForTheOfferToRestart) {
    setFontSize(1.25);
    home.makeFolder("later");
    start();
    showPreferences();
    preferences().indexedFolders().addIndexedFolders({home / "later"});
    QApplication::processEvents();
    EXPECT_TRUE(shown().restartOffer->isVisible());
    expectThatNothingIsCutOffInEitherTab();
}

} // namespace

} // namespace brimwick
