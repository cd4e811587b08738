#pragma once

#include "Transport.h"

#include <memory>

// The second model's three calls: status, text and command.
class QuattroProtocol {
public:
    QuattroProtocol(std::unique_ptr<Transport> transport, QByteArray statusQuery, QString codePage);
    ~QuattroProtocol();

    bool open();
    bool isOpen() const { return m_transport && m_transport->isOpen(); }
    int Estado(); // the status byte; -1 when the printer does not answer
    bool TX(const QString& text);
    bool TXI(const QByteArray& command);
    QByteArray encode(const QString& text) const;

    int replyTimeoutMs = 1000;

private:
    std::unique_ptr<Transport> m_transport;
    QByteArray m_statusQuery;
    QString m_codePage;
};
