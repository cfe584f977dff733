#pragma once

#include "controls/KeyedList.h"
#include "selection/SelectionDatabase.h"
#include "session/Session.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QMenu>
#include <QTest>
#include <QTimer>

#include <functional>
#include <memory>

namespace tessaro::test {

/// Drives a shown screen through its controls, found by name, as a user would.
template <class Screen> class ScreenTest : public SelectionDatabaseTest {
  protected:
    /// Loads the screen as its stage does.
    void Open() {
        screen = std::make_unique<Screen>();
        screen->resize(1280, 600);
        screen->show();
        (void)QTest::qWaitForWindowExposed(screen.get());
    }
    [[nodiscard]] KeyedList& List(const char* name) { return Find<KeyedList>(name); }
    template <class Control> [[nodiscard]] Control& Find(const char* name) {
        auto* control = screen->template findChild<Control*>(QString::fromLatin1(name));
        if (control == nullptr) throw std::runtime_error(std::string("no control ") + name);
        return *control;
    }
    void Click(const char* button) { Find<QAbstractButton>(button).click(); }
    void Highlight(KeyedList& list, const QStringList& keys) {
        list.clearSelection();
        for (const QString& key : keys) {
            const QModelIndex index = list.model()->index(list.Items().RowOfKey(key), 0);
            ASSERT_TRUE(index.isValid()) << key.toStdString();
            QTest::mouseClick(list.viewport(), Qt::LeftButton, Qt::ControlModifier, Place(list, key));
        }
    }
    void DoubleClick(KeyedList& list, const QString& key) {
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, Place(list, key));
        QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, Place(list, key));
    }
    [[nodiscard]] QPoint Place(KeyedList& list, const QString& key) {
        const QModelIndex index = list.model()->index(list.Items().RowOfKey(key), 0);
        list.scrollTo(index);
        return list.visualRect(index).center();
    }
    /// Opens a list's popup with the right button and picks an entry.
    void PickFromPopup(KeyedList& list, const char* entry) {
        QContextMenuEvent event(QContextMenuEvent::Mouse, {4, 4}, list.viewport()->mapToGlobal(QPoint(4, 4)));
        QApplication::sendEvent(list.viewport(), &event);
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_NE(menu, nullptr);
        auto* action = menu->findChild<QAction*>(QString::fromLatin1(entry));
        ASSERT_NE(action, nullptr) << entry;
        EXPECT_TRUE(action->isEnabled()) << entry;
        action->trigger();
        menu->close();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    /// Gives the screen the product's texts; without this there are none. To be called before Open().
    void ReadProductTexts() {
        const auto sample = Connection;
        StartInstallation();
        Connection = sample;
    }
    /// Captions of the disabled entries of a list's popup whose tip doesn't say why they are.
    QStringList Unexplained(KeyedList& list) {
        QContextMenuEvent event(QContextMenuEvent::Mouse, {4, 4}, list.viewport()->mapToGlobal(QPoint(4, 4)));
        QApplication::sendEvent(list.viewport(), &event);
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        if (menu == nullptr) return {QStringLiteral("no popup")};
        QStringList captions;
        for (const QAction* action : menu->actions())
            if (!action->isSeparator() && !action->isEnabled() &&
                action->toolTip() == QAction(action->text()).toolTip())
                captions << action->text();
        menu->close();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return captions;
    }
    /// Answers the next modal dialog once it is up.
    void AnswerDialog(std::function<void(QDialog&)> answer) {
        QTimer::singleShot(0, screen.get(), [answer = std::move(answer)] {
            auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(dialog, nullptr);
            answer(*dialog);
        });
    }
    static std::string Shown(const KeyedList& list) {
        QStringList keys;
        for (int row = 0; row < list.Items().rowCount(); ++row)
            keys << list.Items().ItemAt(row).key;
        return keys.join(QLatin1Char(' ')).toStdString();
    }

    std::unique_ptr<Screen> screen;
};

/// Drops what is highlighted in one list onto another, as the window system would. False when the other list refuses
/// it.
bool DropHighlighted(const KeyedList& from, KeyedList& to);

} // namespace tessaro::test
