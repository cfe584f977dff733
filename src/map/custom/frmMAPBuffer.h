#pragma once

#include <QDialog>

#include <memory>

namespace Ui {
class frmMAPBuffer;
}

namespace tessaro {

/// Asks for the radius of buffers. It closes with OK only when the radius is a number from 5 to 1000.
class frmMAPBuffer final : public QDialog {
    Q_OBJECT

  public:
    explicit frmMAPBuffer(const QString& layerName, QWidget* parent = nullptr);
    ~frmMAPBuffer() override;

    /// 0 when it was cancelled.
    [[nodiscard]] float Radius() const { return radius_; }

  private:
    void cmdBufferOK_Click();

    std::unique_ptr<Ui::frmMAPBuffer> ui_;
    float radius_ = 0;
};

} // namespace tessaro
