// The company logo on the report windows and their paper twins.
//
// Each of these windows has an imgLogo box and a head label the logo stands
// centred over. When a window loads and the logo file exists, it asks the
// logo's processing (frmProcessLogo, installed by the application) to load the
// file and fit it: the logo then goes on every such window there is, in a
// fixed order, at the size that fits a square box of LogoBoxSide twips.
#pragma once

#include <memory>

#include "shell/model/Session.h"

#include <QRect>

class QLabel;

namespace quenby {

// A window that carries the logo: its imgLogo box, and the head label the
// logo stands centred over, in the coordinates of imgLogo's parent.
class LogoTarget
{
public:
    virtual ~LogoTarget() = default;
    virtual QLabel& imgLogo() = 0;
    virtual QRect logoHeadLabel() const = 0;
};

// imgLogo as the page's design placed it: the logo stands centred over the
// box it was designed in, at the box's top. A page made later knows the box's
// room first: until the box is attached, the logo goes on a stand-in, and
// moves onto the box with it.
class DesignedLogo final : public LogoTarget
{
public:
    DesignedLogo();
    ~DesignedLogo() override;
    QLabel* design(QLabel* box);
    void designRoom(const QRect& room) { m_room = room; }
    void attach(QLabel* box);
    QLabel& imgLogo() override;
    QRect logoHeadLabel() const override { return m_room; }

private:
    QLabel* m_box = nullptr;
    std::unique_ptr<QLabel> m_standIn;
    QRect m_room;
};

// What a window's load asks when the logo file exists: load it (cmdLoad) and
// fit it on the windows (SetImageProcessed with the window's left and top).
class LogoProcessing
{
public:
    virtual ~LogoProcessing() = default;
    virtual void loadAndFit(double left, double top) = 0;
};

inline LogoProcessing& logoProcessing()
{
    return Slot<LogoProcessing>::current();
}

// A window's load: when the logo file exists, its processing loads and fits
// it with the window's left and top, in twips.
void loadLogoIfAny(double left, double top);

} // namespace quenby
