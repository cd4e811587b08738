#include "frmAcrescimos.h"

#include "DialogPort.h"

#include <QCloseEvent>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

const QString frmAcrescimos::kSaiaPeloOk = QStringLiteral("Você deve sair ultilizando o botão OK.");

frmAcrescimos::frmAcrescimos(DialogPort& dialogs, const QString& caption, const QStringList& lines,
                             QWidget* parent)
    : QDialog(parent), m_dialogs(dialogs) {
    setObjectName(QStringLiteral("frmAcrescimos"));
    setWindowTitle(caption);
    auto* layout = new QVBoxLayout(this);
    // Lines in order: due date, fine, other charges, amount due, and the days beyond 90.
    const char* names[] = {"lblvencimento", "lblmulta", "lbloutros", "lblvalor", "lbldif"};
    for (int i = 0; i < lines.size() && i < 5; ++i) {
        auto* l = new QLabel(lines[i], this);
        l->setObjectName(QLatin1String(names[i]));
        QFont f(QStringLiteral("Monospace"));
        f.setStyleHint(QFont::TypeWriter);
        f.setPointSize(12);
        f.setBold(i == 3 || i == 4);
        l->setFont(f);
        if (i == 4)
            l->setStyleSheet(QStringLiteral("color: #b00000"));
        layout->addWidget(l);
    }
    auto* ok = new QPushButton(QStringLiteral("OK"), this);
    ok->setObjectName(QStringLiteral("cmdOk"));
    ok->setDefault(true);
    connect(ok, &QPushButton::clicked, this, [this] {
        m_ok = true;
        accept();
    });
    layout->addWidget(ok);
}

void frmAcrescimos::reject() {
    m_dialogs.info(QStringLiteral("Aviso"), kSaiaPeloOk);
}

void frmAcrescimos::closeEvent(QCloseEvent* event) {
    if (m_ok) {
        event->accept();
        return;
    }
    event->ignore();
    m_dialogs.info(QStringLiteral("Aviso"), kSaiaPeloOk);
}
