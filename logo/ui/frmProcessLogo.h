// frmProcessLogo: the window that measures the logo bitmap and fits it on
// every report window. It is never shown in normal use; its members live in
// the logo session (processLogo()), its controls mirror them.
//
// srcPicture holds the bitmap as measured and Image1 the logo as fitted in its
// square box; dstPicture and Image2 serve the resampling of cmdProcess2, whose
// size comes from txtWidth and txtHeight.
#pragma once

#include "logo/model/ProcessLogo.h"
#include "report/ui/ReportLogo.h"

#include <QDateTime>
#include <QImage>
#include <QPixmap>
#include <QWidget>

#include <functional>
#include <vector>

class QLabel;
class QLineEdit;
class QPushButton;

namespace quenby {

class frmProcessLogo final : public QWidget, public LogoProcessing
{
public:
    // The one instance, made on first touch; it stays hidden.
    static frmProcessLogo& instance();

    // The windows that carry the logo, in the order it goes on them; those
    // not made yet are left out of the list.
    using Targets = std::function<std::vector<LogoTarget*>()>;
    void setTargets(Targets targets) { m_targets = std::move(targets); }

    // cmdLoad, then SetImageProcessed: what a report window's load asks.
    void loadAndFit(double left, double top) override;

    // Shows the three measures, hides Image1 and loads the logo bitmap into
    // it and into srcPicture, then ProcessImage. False, and nothing more
    // done, when the bitmap cannot be read.
    bool cmdLoad();
    // Stretched images, then the logo fitted with its preview's place.
    void cmdProcess();
    // Plain images, srcPicture and dstPicture shown, dstPicture sized from
    // the text boxes and the bitmap resampled into it and saved as the logo.
    // False when the bitmap could not be written.
    bool cmdProcess2();

    // Measures srcPicture and lays out the preview.
    void ProcessImage();
    // Fits the logo in the square box at (left, top), then puts it on every
    // window of the targets, centred over its head label.
    TwipsRect SetImageProcessed(double left, double top);

    const QImage& sourcePicture() const { return m_source; }
    // The bitmap was written anew: the next load reads it again.
    void forgetLoadedLogo();
    const QImage& destinationPicture() const { return m_destination; }

private:
    frmProcessLogo();
    void mirrorMeasures();

    Targets m_targets;
    // The bitmap as last read, and what its file was then: each report
    // window's load asks for the logo, and the file is read once while it
    // stays as it is. The logo scaled to its shown size is kept the same way.
    QImage m_source;
    QString m_sourcePath;
    QDateTime m_sourceModified;
    qint64 m_sourceBytes = -1;
    QPixmap m_shownLogo;
    QImage m_destination;
    QLabel* m_srcPicture = nullptr;
    QLabel* m_dstPicture = nullptr;
    QLabel* m_image1 = nullptr;
    QLabel* m_image2 = nullptr;
    QLineEdit* m_txtWidth = nullptr;
    QLineEdit* m_txtHeight = nullptr;
    QLabel* m_label1 = nullptr;
    QLabel* m_label2 = nullptr;
    QLabel* m_label3 = nullptr;
};

} // namespace quenby
