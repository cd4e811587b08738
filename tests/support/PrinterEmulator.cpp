#include "PrinterEmulator.h"

#include "Cp850.h"
#include "PrinterBytes.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <termios.h>
#include <unistd.h>

using namespace PrinterBytes;

void PrinterEmulator::setDocument(bool present) {
    std::lock_guard l(m_mutex);
    m_document = present;
    m_documentAfterMs = -1;
}

void PrinterEmulator::documentAfter(int ms) {
    std::lock_guard l(m_mutex);
    m_document = false;
    m_documentAfterMs = ms;
    m_clock.start();
}

void PrinterEmulator::setOffline(bool v) {
    std::lock_guard l(m_mutex);
    m_offline = v;
}
void PrinterEmulator::setSilent(bool v) {
    std::lock_guard l(m_mutex);
    m_silent = v;
}
void PrinterEmulator::setPaperOut(bool v) {
    std::lock_guard l(m_mutex);
    m_paperOut = v;
}
void PrinterEmulator::hangUpOnStamp(bool on) {
    std::lock_guard l(m_mutex);
    m_hangUpOnStamp = on;
}
bool PrinterEmulator::takeHangUp() {
    std::lock_guard l(m_mutex);
    const bool h = m_hangUp;
    m_hangUp = false;
    return h;
}
QStringList PrinterEmulator::tape() const {
    std::lock_guard l(m_mutex);
    return m_tape;
}
QStringList PrinterEmulator::documents() const {
    std::lock_guard l(m_mutex);
    return m_documents;
}
QByteArray PrinterEmulator::received() const {
    std::lock_guard l(m_mutex);
    return m_received;
}
bool PrinterEmulator::inDocumentMode() const {
    std::lock_guard l(m_mutex);
    return m_documentMode;
}
bool PrinterEmulator::inAuthMode() const {
    std::lock_guard l(m_mutex);
    return m_authMode;
}

bool PrinterEmulator::attributesOff() const {
    std::lock_guard l(m_mutex);
    return !m_bold && !m_expanded && !m_underline && !m_italic && !m_condensed;
}

bool PrinterEmulator::documentPresent() const {
    return m_document || (m_documentAfterMs >= 0 && m_clock.elapsed() >= m_documentAfterMs);
}

int PrinterEmulator::statusByte() const {
    if (m_model == Model::Quattro)
        return documentPresent() ? kQuattroDocument : 0;
    int s = kCommandDone;
    if (!m_offline)
        s |= kOnline;
    if (m_paperOut)
        s |= kPaperOut;
    if (documentPresent())
        s |= kDocument;
    return s;
}

QByteArray PrinterEmulator::feed(const QByteArray& bytes) {
    std::lock_guard l(m_mutex);
    m_received += bytes;
    m_pending += bytes;
    QByteArray out;
    if (m_model == Model::Bematech)
        parseBematech(out);
    else
        parseQuattro(out);
    return m_silent ? QByteArray() : out;
}

void PrinterEmulator::endLine(bool document) {
    const QString text = Cp850::decode(m_line);
    (document ? m_documents : m_tape).append(text);
    m_line.clear();
}

void PrinterEmulator::parseBematech(QByteArray& out) {
    struct Seq {
        const QByteArray& bytes;
        bool* flag;
        bool value;
    };
    const Seq toggles[] = {{kBoldOn, &m_bold, true},
                           {kBoldOff, &m_bold, false},
                           {kExpandedOn, &m_expanded, true},
                           {kExpandedOff, &m_expanded, false},
                           {kUnderlineOn, &m_underline, true},
                           {kUnderlineOff, &m_underline, false},
                           {kItalicOn, &m_italic, true},
                           {kItalicOff, &m_italic, false},
                           {kCondensedOn, &m_condensed, true},
                           {kCondensedOff, &m_condensed, false},
                           {kDocumentOn, &m_documentMode, true},
                           {kDocumentOff, &m_documentMode, false}};
    while (!m_pending.isEmpty()) {
        const char c = m_pending.at(0);
        if (c == 0x1B || c == 0x1D || c == 0x0F) {
            bool matched = false, partial = false;
            for (const QByteArray& plain : {kEscBemaMode, kInit, kAfterStamp}) {
                if (m_pending.startsWith(plain)) {
                    m_pending.remove(0, plain.size());
                    matched = true;
                    break;
                }
                partial = partial || plain.startsWith(m_pending);
            }
            for (const Seq& s : toggles) {
                if (matched)
                    break;
                if (m_pending.startsWith(s.bytes)) {
                    if (s.flag == &m_documentMode && !s.value && !m_line.isEmpty())
                        endLine(true);
                    *s.flag = s.value;
                    m_pending.remove(0, s.bytes.size());
                    matched = true;
                }
                partial = partial || s.bytes.startsWith(m_pending);
            }
            if (matched)
                continue;
            if (partial)
                return; // wait for the rest of the sequence
            m_pending.remove(0, 1);
            continue;
        }
        m_pending.remove(0, 1);
        if (c == 0x05) {
            out += char(statusByte());
        } else if (c == '\n' && m_documentMode && m_hangUpOnStamp) {
            // The stamp's text came whole; the printer dies before printing it.
            m_hangUp = true;
            m_documentMode = false;
            m_line.clear();
            m_pending.clear();
            return;
        } else if (c == '\n') {
            endLine(m_documentMode);
        } else if (c != '\r') {
            m_line += c;
        }
    }
}

void PrinterEmulator::parseQuattro(QByteArray& out) {
    while (!m_pending.isEmpty()) {
        if (m_stamping) {
            // The stamp's text runs to its terminator, or without one to the next command.
            const int end = quattroEnd.isEmpty() ? int(m_pending.indexOf('\x1B'))
                                                 : int(m_pending.indexOf(quattroEnd));
            if (end < 0)
                return;
            m_line += m_pending.left(end);
            m_pending.remove(0, end + quattroEnd.size());
            if (m_authMode)
                endLine(true);
            m_line.clear();
            m_stamping = false;
            continue;
        }
        bool partial = false;
        for (const QByteArray& seq :
             {kQuattroAuthOn, kQuattroAuthOff, kQuattroStamp, quattroStatusQuery}) {
            if (m_pending.startsWith(seq)) {
                m_pending.remove(0, seq.size());
                if (seq == kQuattroAuthOn)
                    m_authMode = true;
                else if (seq == kQuattroAuthOff)
                    m_authMode = false;
                else if (seq == kQuattroStamp)
                    m_stamping = true;
                else if (!m_offline)
                    out += char(statusByte());
                partial = false;
                goto next;
            }
            partial = partial || seq.startsWith(m_pending);
        }
        if (partial)
            return;
        {
            const char c = m_pending.at(0);
            m_pending.remove(0, 1);
            if (c == '\n')
                endLine(false);
            else if (c != '\r')
                m_line += c;
        }
    next:;
    }
}

bool MemoryTransport::write(const QByteArray& data, int) {
    if (!m_open || failWrites)
        return false;
    m_replies += m_emulator.feed(data);
    return true;
}

QByteArray MemoryTransport::read(int max, int) {
    const QByteArray r = m_replies.left(max);
    m_replies.remove(0, r.size());
    return r;
}

std::unique_ptr<EmulatorLink> EmulatorLink::pty(PrinterEmulator& e) {
    std::unique_ptr<EmulatorLink> link(new EmulatorLink(e));
    link->m_fd = posix_openpt(O_RDWR | O_NOCTTY);
    if (link->m_fd < 0 || grantpt(link->m_fd) != 0 || unlockpt(link->m_fd) != 0)
        return nullptr;
    link->m_porta = QString::fromLocal8Bit(ptsname(link->m_fd));
    termios t{};
    tcgetattr(link->m_fd, &t);
    cfmakeraw(&t);
    tcsetattr(link->m_fd, TCSANOW, &t);
    link->m_thread = std::thread([l = link.get()] { l->servePty(); });
    return link;
}

std::unique_ptr<EmulatorLink> EmulatorLink::tcp(PrinterEmulator& e) {
    std::unique_ptr<EmulatorLink> link(new EmulatorLink(e));
    link->m_fd = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in a{};
    a.sin_family = AF_INET;
    a.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t len = sizeof a;
    if (link->m_fd < 0 || ::bind(link->m_fd, reinterpret_cast<sockaddr*>(&a), sizeof a) != 0 ||
        ::listen(link->m_fd, 4) != 0 ||
        ::getsockname(link->m_fd, reinterpret_cast<sockaddr*>(&a), &len) != 0)
        return nullptr;
    link->m_porta = QStringLiteral("tcp:127.0.0.1:%1").arg(ntohs(a.sin_port));
    link->m_thread = std::thread([l = link.get()] { l->serveTcp(); });
    return link;
}

EmulatorLink::~EmulatorLink() {
    m_stop = true;
    if (m_thread.joinable())
        m_thread.join();
    if (m_fd >= 0)
        ::close(m_fd);
}

void EmulatorLink::pump(int fd) {
    char buf[512];
    while (!m_stop) {
        pollfd p{fd, POLLIN, 0};
        if (::poll(&p, 1, 50) <= 0)
            continue;
        if (p.revents & (POLLHUP | POLLERR)) {
            if (p.revents & POLLIN) {
                // drain what is left before the other side closed
            } else {
                usleep(20000); // a closed pty slave: wait for the next open
                if (fd != m_fd)
                    return;
                continue;
            }
        }
        const ssize_t n = ::read(fd, buf, sizeof buf);
        if (n <= 0) {
            if (fd != m_fd)
                return;
            continue;
        }
        const QByteArray reply = m_emulator.feed(QByteArray(buf, int(n)));
        if (fd != m_fd && m_emulator.takeHangUp())
            return; // the caller closes the connection
        if (!reply.isEmpty() && ::write(fd, reply.constData(), size_t(reply.size())) < 0)
            return;
    }
}

void EmulatorLink::servePty() {
    pump(m_fd);
}

void EmulatorLink::serveTcp() {
    while (!m_stop) {
        pollfd p{m_fd, POLLIN, 0};
        if (::poll(&p, 1, 50) <= 0)
            continue;
        const int client = ::accept(m_fd, nullptr, nullptr);
        if (client < 0)
            continue;
        pump(client);
        ::close(client);
    }
}
