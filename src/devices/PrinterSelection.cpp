#include "PrinterSelection.h"

PrinterSelection::PortsEntry PrinterSelection::splitPortsEntry(const QString& text) {
    PortsEntry e;
    const int first = text.indexOf(QLatin1Char(','));
    if (first < 0)
        return e;
    e.driver = text.left(first);
    const int second = text.indexOf(QLatin1Char(','), first + 1);
    if (second < 0)
        return e;
    e.port = text.mid(first + 1, second - first - 1);
    return e;
}

std::optional<QString> PrinterSelection::defaultDevice(const QString& name, const QString& current,
                                                       const QString& portsEntry) {
    if (name.isEmpty() || name == current)
        return std::nullopt;
    const PortsEntry e = splitPortsEntry(portsEntry);
    if (e.driver.isEmpty() || e.port.isEmpty())
        return std::nullopt;
    return name + QLatin1Char(',') + e.driver + QLatin1Char(',') + e.port;
}
