#pragma once

#include <QByteArray>
#include <QString>
#include <memory>
#include <optional>

// Where the printer's bytes go: a serial port, a parallel or USB printer device, a network
// socket or a file. Every call is bounded by a time-out so an unplugged printer never hangs the
// counter.
class Transport {
public:
    virtual ~Transport() = default;

    virtual bool open(QString* error) = 0;
    virtual void close() = 0;
    virtual bool isOpen() const = 0;
    virtual bool write(const QByteArray& data, int timeoutMs) = 0;
    // Up to `max` bytes; waits at most `timeoutMs` for the first. Empty when nothing came.
    virtual QByteArray read(int max, int timeoutMs) = 0;
    // Whether the other end can answer a status query at all (a spool file cannot).
    virtual bool answers() const { return true; }
    // The parallel port's status lines, where the device offers them (Linux LPGETSTATUS).
    virtual std::optional<int> lineStatus() { return std::nullopt; }
    virtual QString describe() const = 0;
};

struct TransportOptions {
    int baud = 9600;
    char parity = 'N'; // N, E or O
    int dataBits = 8;
    int stopBits = 1;
    int tcpPort = 9100;
    int connectTimeoutMs = 3000;
};

class TransportFactory {
public:
    // "LPT1", "LPT2", "COM1", "COM2", "USB" (mapped per platform), a device path or serial port
    // name, "tcp:HOST[:PORT]", or "file:PATH" (a spool file).
    static std::unique_ptr<Transport> create(const QString& porta, const TransportOptions& options);
    static QString classicName(const QString& porta); // the platform name of a classic port
    // Whether `create` knows what to make of the setting (a classic name, a device path, a
    // serial port name, tcp: or file:); a value with a comment glued to it is not.
    static bool recognised(const QString& porta);
    // "9600,8,N,1" ([Print] serial); unparsable parts keep the defaults.
    static TransportOptions optionsFrom(const QString& serial);
};
