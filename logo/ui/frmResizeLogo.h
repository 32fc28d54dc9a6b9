// frmResizeLogo: the window that turns the operator's picture into the logo
// bitmap. It is never shown in normal use: pbOriginalPicture holds the
// picture as loaded, pbResizePicture the box it is stretched into, and
// Command1 runs AutoResizeLogo.
#pragma once

#include "shell/model/DataFolders.h"

#include <QImage>
#include <QSize>
#include <QWidget>

class QLabel;
class QPushButton;

namespace quenby {

class frmResizeLogo final : public QWidget, public LogoSelectionView
{
public:
    // The one instance, made on first touch; it stays hidden.
    static frmResizeLogo& instance();

    // The designed size of pbResizePicture, in pixels: the bitmap is at most
    // this wide, and a picture not clearly wider than high this high.
    static constexpr QSize ResizeBox{1960, 980};

    void hideResizeLogo() override { hide(); }
    bool loadLogoImage(const QString& imagePath) override;

    // Stretches the picture of pbOriginalPicture into pbResizePicture, sized
    // so that the picture keeps its proportions, and saves it as the logo
    // bitmap. False when the bitmap could not be written.
    bool AutoResizeLogo();

    const QImage& originalPicture() const { return m_original; }
    const QImage& resizedPicture() const { return m_resized; }

private:
    frmResizeLogo();

    QLabel* m_pbOriginalPicture = nullptr;
    QLabel* m_pbResizePicture = nullptr;
    QPushButton* m_command1 = nullptr;
    QImage m_original;
    QImage m_resized;
};

} // namespace quenby
