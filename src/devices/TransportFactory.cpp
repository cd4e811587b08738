#include "Transport.h"
#include "Transports.h"

#include <QRegularExpression>
#include <QStringList>

QString TransportFactory::classicName(const QString& porta) {
    const QString p = porta.trimmed().toUpper();
#ifdef Q_OS_WIN
    if (p == QLatin1String("USB"))
        return QStringLiteral("USB001");
    return p;
#else
    if (p == QLatin1String("LPT1"))
        return QStringLiteral("/dev/lp0");
    if (p == QLatin1String("LPT2"))
        return QStringLiteral("/dev/lp1");
    if (p == QLatin1String("LPT3"))
        return QStringLiteral("/dev/lp2");
    if (p == QLatin1String("COM1"))
        return QStringLiteral("/dev/ttyS0");
    if (p == QLatin1String("COM2"))
        return QStringLiteral("/dev/ttyS1");
    if (p == QLatin1String("USB"))
        return QStringLiteral("/dev/usb/lp0");
    return porta.trimmed();
#endif
}

bool TransportFactory::recognised(const QString& porta) {
    const QString p = porta.trimmed();
    if (p.isEmpty() || p.contains(QLatin1Char(';')) || p.contains(QLatin1Char(' ')) ||
        p.contains(QLatin1Char('\t')))
        return false;
    static const QRegularExpression classic(QStringLiteral("^(LPT[1-3]|COM[0-9]{1,3}|USB)$"),
                                            QRegularExpression::CaseInsensitiveOption);
    if (classic.match(p).hasMatch())
        return true;
    if (p.startsWith(QLatin1String("tcp:"), Qt::CaseInsensitive)) {
        const QStringList parts = p.mid(4).split(QLatin1Char(':'));
        bool ok = parts.size() == 1;
        if (parts.size() == 2)
            parts[1].toInt(&ok);
        return ok && !parts[0].isEmpty();
    }
    if (p.startsWith(QLatin1String("file:"), Qt::CaseInsensitive))
        return p.size() > 5;
    return p.startsWith(QLatin1String("/dev/")) || p.startsWith(QLatin1String("\\\\.\\"));
}

TransportOptions TransportFactory::optionsFrom(const QString& serial) {
    TransportOptions o;
    const QStringList parts = serial.split(QLatin1Char(','), Qt::SkipEmptyParts);
    bool ok = false;
    if (parts.size() > 0 && parts[0].trimmed().toInt(&ok) > 0 && ok)
        o.baud = parts[0].trimmed().toInt();
    if (parts.size() > 1 &&
        (parts[1].trimmed() == QLatin1String("7") || parts[1].trimmed() == QLatin1String("8")))
        o.dataBits = parts[1].trimmed().toInt();
    if (parts.size() > 2 && QStringLiteral("NEO").contains(parts[2].trimmed().toUpper()) &&
        parts[2].trimmed().size() == 1)
        o.parity = parts[2].trimmed().toUpper().at(0).toLatin1();
    if (parts.size() > 3 &&
        (parts[3].trimmed() == QLatin1String("1") || parts[3].trimmed() == QLatin1String("2")))
        o.stopBits = parts[3].trimmed().toInt();
    return o;
}

std::unique_ptr<Transport> TransportFactory::create(const QString& porta,
                                                    const TransportOptions& options) {
    const QString p = porta.trimmed();
    if (p.startsWith(QLatin1String("tcp:"), Qt::CaseInsensitive)) {
        const QStringList parts = p.mid(4).split(QLatin1Char(':'));
        const int port = parts.size() > 1 ? parts[1].toInt() : options.tcpPort;
        return std::make_unique<TcpTransport>(parts[0], port > 0 ? port : options.tcpPort,
                                              options.connectTimeoutMs);
    }
    if (p.startsWith(QLatin1String("file:"), Qt::CaseInsensitive))
        return std::make_unique<FileTransport>(p.mid(5));
    const QString name = classicName(p);
    // Serial ports by name; printer devices (lp, usb) as files.
    const bool serial = name.contains(QLatin1String("tty")) ||
                        name.startsWith(QLatin1String("COM"), Qt::CaseInsensitive) ||
                        name.startsWith(QLatin1String("/dev/pts/"));
    if (serial)
        return std::make_unique<SerialTransport>(name, options);
    return std::make_unique<DeviceFileTransport>(name);
}
