#pragma once

#include "Heartbeat.h"

#include <QSet>
#include <QString>
#include <QTimer>

class QAbstractItemView;
class QWidget;

namespace tessaro {

class frmMain;

/// Does on the program's own frame what a user does with a file from somebody else, and prints a line for each thing
/// that it reached. Dialogs that come up are looked at and closed.
class Walker final {
  public:
    explicit Walker(frmMain& frame);

    /// Starts the program on an application folder; false when it doesn't start.
    [[nodiscard]] bool Start(const QString& application);
    /// Opens the file as if it had been typed into the address. True when the program took it.
    bool Open(const QString& file);
    /// The way through the four stages with everything selected, to the first rows. What can't be pressed is passed
    /// over.
    void Funnel();
    /// Looks at everything that shows texts of the database: lists, tool tips, details, information sheets, statistics,
    /// exports to `folder`, and keeps a favourite.
    void LookAtAll(const QString& folder);
    /// Presses, types and chooses at random for so long. The same seed does the same on the same machine.
    void Monkey(unsigned seed, int seconds);
    void Close();

  private:
    void Reached(const QString& what);
    void LookAtDialog();
    void ShowTips(QAbstractItemView& view) const;
    void ShowAllTips(const QWidget& parent) const;
    bool Press(const QString& name);
    void Trigger(const QString& action);
    void SelectAllOn(int stage, const QString& screen);
    void LookAtIndicatorViews();
    void LookAtData(const QString& folder);
    void NoteStage();

    frmMain& frame_;
    Heartbeat heartbeat_;
    QTimer dialogs_;
    QSet<QString> reached_;
};

} // namespace tessaro
