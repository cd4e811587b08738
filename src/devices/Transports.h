#pragma once

#include "Transport.h"

#include <QSerialPort>
#include <QTcpSocket>

class SerialTransport : public Transport {
public:
    SerialTransport(QString name, const TransportOptions& o)
        : m_name(std::move(name)), m_options(o) {}
    bool open(QString* error) override;
    void close() override { m_port.close(); }
    bool isOpen() const override { return m_port.isOpen(); }
    bool write(const QByteArray& data, int timeoutMs) override;
    QByteArray read(int max, int timeoutMs) override;
    QString describe() const override { return m_name; }

private:
    QString m_name;
    TransportOptions m_options;
    QSerialPort m_port;
};

class TcpTransport : public Transport {
public:
    TcpTransport(QString host, int port, int connectTimeoutMs)
        : m_host(std::move(host)), m_port(port), m_timeout(connectTimeoutMs) {}
    bool open(QString* error) override;
    void close() override;
    bool isOpen() const override { return m_socket.state() == QAbstractSocket::ConnectedState; }
    bool write(const QByteArray& data, int timeoutMs) override;
    QByteArray read(int max, int timeoutMs) override;
    QString describe() const override {
        return QStringLiteral("tcp:%1:%2").arg(m_host).arg(m_port);
    }

private:
    QString m_host;
    int m_port;
    int m_timeout;
    QTcpSocket m_socket;
};

// A printer device file (/dev/lp0, /dev/usb/lp0): non-blocking writes bounded by a time-out.
class DeviceFileTransport : public Transport {
public:
    explicit DeviceFileTransport(QString path) : m_path(std::move(path)) {}
    ~DeviceFileTransport() override { close(); }
    bool open(QString* error) override;
    void close() override;
    bool isOpen() const override { return m_fd >= 0; }
    bool write(const QByteArray& data, int timeoutMs) override;
    QByteArray read(int max, int timeoutMs) override;
    std::optional<int> lineStatus() override;
    QString describe() const override { return m_path; }

private:
    QString m_path;
    int m_fd = -1;
};

// A spool file: everything is appended; nothing ever answers.
class FileTransport : public Transport {
public:
    explicit FileTransport(QString path) : m_path(std::move(path)) {}
    bool open(QString* error) override;
    void close() override { m_open = false; }
    bool isOpen() const override { return m_open; }
    bool write(const QByteArray& data, int timeoutMs) override;
    QByteArray read(int, int) override { return {}; }
    bool answers() const override { return false; }
    QString describe() const override { return QStringLiteral("file:") + m_path; }

private:
    QString m_path;
    bool m_open = false;
};
