#pragma once

#include <QString>
#include <optional>

// The ordinary printer ([Print] impressora_padrao) is where coupons and reports go. These are
// the rules of making a printer the system's default where the platform keeps it as a
// "name,driver,port" profile entry; this platform keeps no such entry, so the program prints
// to the chosen printer by name and leaves the system's default alone.
class PrinterSelection {
public:
    struct PortsEntry {
        QString driver;
        QString port;
    };

    // "driver,port[,...]": the text before the first comma, then the text up to the next one.
    // No comma: both empty; one comma: a driver without a port.
    static PortsEntry splitPortsEntry(const QString& text);

    // The "printer,driver,port" value that makes `name` the default, or nothing when no change
    // is due: an empty name, the printer already current, or an entry without driver or port.
    static std::optional<QString> defaultDevice(const QString& name, const QString& current,
                                                const QString& portsEntry);
};
