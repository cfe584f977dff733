#pragma once

#include "controls/KeyedList.h"

#include <QColor>
#include <QSet>
#include <QTimer>
#include <QWidget>

#include <memory>

class QMenu;

namespace Ui {
class SelectionLists;
}

namespace tessaro {

/// The two lists that every selection screen has: Available with a filter line, the buttons between, Selected. It
/// shows counts and hints, and sends one signal for each command, whether it came from a button, a key, a double click
/// or a drag. The screen carries the commands out.
class SelectionLists final : public QWidget {
    Q_OBJECT

  public:
    explicit SelectionLists(QWidget* parent = nullptr);
    ~SelectionLists() override;

    [[nodiscard]] KeyedList& Available();
    [[nodiscard]] KeyedList& Selected();

    /// Other names for the lists and their sort buttons, for screens whose controls are called differently.
    void SetListNames(const QString& available, const QString& selected);
    void SetSortButtonNames(const QString& available, const QString& selected);
    /// Keys of the captions above the lists; "AVAILABLE" and "SELECTED" unless set.
    void SetCaptionKeys(const QString& available, const QString& selected);
    /// Keys of the texts in the lists while they are empty.
    void SetHints(const QString& availableKey, const QString& selectedKey);
    /// Icons of the columns of the two lists, by the keys of their settings.
    void SetIcons(const QStringList& availableSettings, const QStringList& selectedSettings);
    /// Captions, tool tips, hints and accessible names in the current language.
    void SetFormCaptions();
    /// Takes in a widget that can show the available items in another way than the list; hidden at first.
    void SetOtherView(QWidget* view);
    /// Shows it in the place of the list, with more room, or the list again. Nothing is highlighted meanwhile.
    void ShowOtherView(bool shown);
    void FocusFilter();
    /// Empties the filter line, before another list is shown.
    void ClearFilter();
    /// Shows above the Available list what it holds instead of the tree's branch, and in the list itself when it is
    /// empty.
    void ShowInstead(const QString& what, const QString& nothing = {});
    /// Says in the Selected list why it is empty (an automatic selection has found nothing), until it is filled.
    void ShowNothingFound(const QString& textKey);
    /// The Available list shows the branch again.
    void ShowBranch();
    /// The Available list holds something else than the branch, or not all of it.
    [[nodiscard]] bool ShowsOther() const;
    /// Copy and Select all of the Edit menu, for the list that has the focus (Available when neither has).
    void CopyHighlighted();
    void HighlightAll();
    /// Enables the buttons by what is highlighted; for a form that handles the lists' signals itself.
    void EnableButtons();
    /// Shows a message with the number of items of a list.
    void ShowCount(const KeyedList& list);

  Q_SIGNALS:
    void SearchRequested(const QString& text); ///< Enter in the filter line
    void AddHighlighted();
    void AddAll();
    void AddOne(const QString& key);
    void RemoveHighlighted();
    void RemoveAll();
    void AvailablePopup(const QPoint& globalPosition);
    void SelectedPopup(const QPoint& globalPosition);
    void BranchWanted();   ///< the user ends what the list shows instead of the branch
    void LeaveBackwards(); ///< the arrow key out of the Available list, towards the tree
    void SelectedCountChanged();

  protected:
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void ConnectLists();
    void ConnectButtons();
    void ApplyFilter();
    void ShowCounts();
    void ShowListState();
    void EndListState();
    void ShowHints();
    void ShowButtonIcons();
    void ShowSortIcons();
    void Leave(bool fromAvailable, Qt::Edge edge);
    [[nodiscard]] QWidget* AvailableView() const;

    std::unique_ptr<Ui::SelectionLists> ui_;
    QString availableCaptionKey_ = QStringLiteral("AVAILABLE");
    QString selectedCaptionKey_ = QStringLiteral("SELECTED");
    QTimer filterPause_;
    QString availableHintKey_;
    QString selectedHintKey_;
    bool showsBranch_ = true;
    QString instead_;
    QString nothingInstead_;
    QWidget* otherView_ = nullptr;
    QList<int> sizesOfLists_; ///< of the panes while the other view is shown
    QString nothingFoundKey_; ///< why the Selected list is empty; none: nothing was chosen yet
};

/// One entry of a list's popup menu. Without an action it is shown disabled, with the tip that a later version will
/// have it.
struct PopupEntry {
    int index;
    const char* key; ///< caption; nullptr: a line
    std::function<void()> action;
    bool enabled = true;
    const char* whyNot = nullptr; ///< tip of a disabled entry: what it lacks
};
/// Keys of the tips of entries that act on highlighted items, or on all items of a list.
inline constexpr auto kWhyNoneHighlighted = "TS_WhyNoneHighlighted";
inline constexpr auto kWhyListEmpty = "TS_WhyListEmpty";
/// The keys of items.
[[nodiscard]] QSet<QString> KeysOf(const std::vector<KeyedItem>& items);
/// The colour of shared items, or an invalid one while the preference is off.
[[nodiscard]] QColor GlobalItemColor();

/// Shows a popup at a place and gives it; entries are named `menuName` + "_" + index. It is kept until the owner shows
/// it again.
QMenu* ShowPopup(QWidget* owner, const QString& menuName, const QPoint& globalPosition,
                 const QList<PopupEntry>& entries);

} // namespace tessaro
