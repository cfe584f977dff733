#pragma once

#include <QStringList>
#include <QWidget>

#include <memory>

class QLabel;

namespace Ui {
class frmSplash;
}

namespace tessaro {

class LinkButton;

/// The home page: picture buttons into the stages, the databases, and links. It asks the frame for what is chosen.
class frmSplash final : public QWidget {
    Q_OBJECT

  public:
    explicit frmSplash(QWidget* parent = nullptr);
    ~frmSplash() override;

    /// The databases to choose from, and which of them is open.
    void ShowDatabases(const QStringList& addresses, const QString& current);
    void SetFormCaptions();
    /// Keeps the state of the show-on-start-up box. To be called before the page is deleted.
    void Unload();

  Q_SIGNALS:
    void StageChosen(int stage);
    void DataChosen();
    void GalleryChosen(int kind);
    void DatabaseChosen(const QString& address);
    void OtherDatabaseChosen();

  private:
    void LoadPictures();
    void MakeLinks();
    void SetThePropertiesFPLables();
    void ShowWelcome();
    void OpenLink(const QString& name);
    [[nodiscard]] bool IsOpenDatabase(const QString& address) const;

    std::unique_ptr<Ui::frmSplash> ui_;
    QString current_;
};

} // namespace tessaro
