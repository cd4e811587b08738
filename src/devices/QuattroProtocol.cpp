#include "QuattroProtocol.h"

#include "Cp850.h"

QuattroProtocol::QuattroProtocol(std::unique_ptr<Transport> transport, QByteArray statusQuery,
                                 QString codePage)
    : m_transport(std::move(transport)), m_statusQuery(std::move(statusQuery)),
      m_codePage(std::move(codePage)) {}

QuattroProtocol::~QuattroProtocol() {
    if (m_transport)
        m_transport->close();
}

bool QuattroProtocol::open() {
    return m_transport && m_transport->open(nullptr);
}

int QuattroProtocol::Estado() {
    if (!m_transport || !m_transport->isOpen())
        return -1;
    if (!m_transport->answers())
        return 0xFF;
    if (!m_transport->write(m_statusQuery, replyTimeoutMs))
        return -1;
    const QByteArray reply = m_transport->read(1, replyTimeoutMs);
    return reply.isEmpty() ? -1 : static_cast<unsigned char>(reply.at(0));
}

QByteArray QuattroProtocol::encode(const QString& text) const {
    return Cp850::encodeFor(m_codePage, text);
}

bool QuattroProtocol::TX(const QString& text) {
    return m_transport && m_transport->isOpen() &&
           m_transport->write(encode(text), replyTimeoutMs * 3);
}

bool QuattroProtocol::TXI(const QByteArray& command) {
    return m_transport && m_transport->isOpen() && m_transport->write(command, replyTimeoutMs * 3);
}
