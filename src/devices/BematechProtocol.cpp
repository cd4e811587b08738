#include "BematechProtocol.h"

#include "Cp850.h"
#include "PrinterBytes.h"

#include <QDeadlineTimer>
#include <QThread>

using namespace PrinterBytes;

int BematechProtocol::IniciaPorta(const QString& porta, const TransportOptions& options) {
    return IniciaPorta(TransportFactory::create(porta, options));
}

int BematechProtocol::IniciaPorta(std::unique_ptr<Transport> transport) {
    FechaPorta();
    if (!transport || !transport->open(nullptr))
        return 0;
    m_transport = std::move(transport);
    return 1;
}

int BematechProtocol::ConfiguraModeloImpressora(int) {
    // Every session starts in ESC/Bema: the same bytes mean other things in ESC/POS.
    return send(kEscBemaMode + kInit) ? 1 : 0;
}

int BematechProtocol::FechaPorta() {
    if (!m_transport)
        return 0;
    m_transport->close();
    m_transport.reset();
    return 1;
}

bool BematechProtocol::send(const QByteArray& bytes) {
    return m_transport && m_transport->isOpen() && m_transport->write(bytes, replyTimeoutMs * 3);
}

void BematechProtocol::wait(int ms) {
    if (sleep)
        sleep(ms);
    else
        QThread::msleep(ulong(ms));
}

PrinterStatus BematechProtocol::Status() {
    m_last = query();
    return m_last;
}

PrinterStatus BematechProtocol::query() {
    PrinterStatus s;
    if (!m_transport || !m_transport->isOpen())
        return s;
    if (!m_transport->answers()) {
        s.answered = s.online = s.document = true; // a spool file takes everything
        return s;
    }
    if (const auto lines = m_transport->lineStatus()) {
        s.answered = true;
        s.online = (*lines & kLineSelect) && (*lines & kLineNoError);
        s.paperOut = *lines & kLinePaperOut;
        s.document = s.online; // the parallel lines tell nothing of the slot
        s.raw = *lines;
        return s;
    }
    if (!send(kEnq))
        return s;
    const QByteArray reply = m_transport->read(1, replyTimeoutMs);
    if (reply.isEmpty())
        return s;
    s.answered = true;
    s.raw = static_cast<unsigned char>(reply.at(0));
    s.online = s.raw & kOnline;
    s.paperOut = s.raw & kPaperOut;
    s.document = s.raw & kDocument;
    s.nearEnd = s.raw & kNearEnd;
    return s;
}

int BematechProtocol::FormataTX(const QString& text, int tipoLetra, int italico, int sublinhado,
                                int expandido, int enfatizado) {
    // Every attribute is set before the text and all are switched off after it, so a line never
    // inherits the previous one's.
    QByteArray b = (tipoLetra == 1 ? kCondensedOn : kCondensedOff) +
                   (italico ? kItalicOn : kItalicOff) +
                   (sublinhado ? kUnderlineOn : kUnderlineOff) +
                   (expandido ? kExpandedOn : kExpandedOff) + (enfatizado ? kBoldOn : kBoldOff);
    b += Cp850::encodeFor(m_codePage, text);
    b += kItalicOff + kUnderlineOff + kExpandedOff + kBoldOff + kCondensedOff;
    if (!send(b))
        return 0;
    const PrinterStatus s = Status();
    return s.answered && s.online && !s.paperOut ? 1 : 0;
}

int BematechProtocol::AutenticaDoc(const QString& text, int timeoutMs) {
    QDeadlineTimer deadline(timeoutMs);
    bool waiting = false;
    const auto stopWaiting = [&] {
        if (waiting && onWaiting)
            onWaiting(false);
        waiting = false;
    };
    for (;;) {
        const PrinterStatus s = Status();
        if (!s.answered || !s.online || s.paperOut) {
            stopWaiting();
            return 0;
        }
        if (s.document)
            break;
        if (deadline.hasExpired()) {
            stopWaiting();
            return -1;
        }
        if (!waiting && onWaiting)
            onWaiting(true);
        waiting = true;
        wait(pollIntervalMs);
    }
    stopWaiting();
    const bool ok = send(kDocumentOn) && send(Cp850::encodeFor(m_codePage, text) + kCrLf);
    const bool off = send(kDocumentOff); // always leave document mode
    if (!ok || !off)
        return 0;
    // Bytes written are not a stamp: a printer that hung up or went off line meanwhile is asked.
    const PrinterStatus after = Status();
    return after.answered && after.online ? 1 : 0;
}

int BematechProtocol::ComandoTX(const QByteArray& command) {
    return send(command) ? 1 : 0;
}
