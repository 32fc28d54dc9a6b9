#include "upload/platform/QtPortList.h"

#include "shell/model/Platform.h"

#include <QDir>
#include <QSerialPortInfo>

namespace quenby {

QStringList extraPortPaths()
{
    return qEnvironmentVariable("QUENBY_EXTRA_PORTS")
        .split(QDir::listSeparator(), Qt::SkipEmptyParts);
}

std::vector<PnpEntity> QtPortList::entities()
{
    std::vector<PnpEntity> devices;
    const bool comNumbers = naming() == PortNaming::ComCaption;
    // Qt lists only ports that the system reports as present.
    for (const QSerialPortInfo& info : QSerialPortInfo::availablePorts()) {
        PnpEntity e;
        if (comNumbers) {
            const QString description =
                info.description().isEmpty() ? QStringLiteral("Serial Port") : info.description();
            e.caption = description + QStringLiteral(" (") + info.portName() + QStringLiteral(")");
        } else {
            e.caption = info.portName();
        }
        e.location = info.systemLocation();
        devices.push_back(e);
    }
    // Ports the system does not enumerate, named by the operator.
    for (const QString& path : extraPortPaths()) {
        PnpEntity e;
        e.caption = comNumbers ? path + QStringLiteral(" (") + path + QStringLiteral(")") : path;
        e.location = path;
        devices.push_back(e);
    }
    return devices;
}

PortNaming QtPortList::naming() const
{
    return isWindowsPlatform() ? PortNaming::ComCaption : PortNaming::DeviceName;
}

} // namespace quenby
