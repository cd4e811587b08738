#include "frmAcrescimos.h"
#include "SystemTexts.h"

#include "DialogPort.h"
#include "Tone.h"

#include <QCloseEvent>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

frmAcrescimos::frmAcrescimos(DialogPort& dialogs, const QString& caption, const QStringList& lines,
                             QWidget* parent)
    : QDialog(parent), m_dialogs(dialogs) {
    setObjectName(QStringLiteral("frmAcrescimos"));
    setWindowTitle(caption);
    auto* layout = new QVBoxLayout(this);
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(12);
    layout->addLayout(grid);
    // Lines in order: due date, fine, other charges, amount due, and the days beyond 90. A line
    // with an amount is split at "R$" so the amounts stand right-aligned in one column.
    const char* names[] = {"lblvencimento", "lblmulta", "lbloutros", "lblvalor", "lbldif"};
    const QString currency = QStringLiteral(":R$");
    for (int i = 0; i < lines.size() && i < 5; ++i) {
        QFont f = font();
        f.setPointSize(13);
        f.setBold(i == 3 || i == 4);
        const int cut = lines[i].indexOf(currency);
        auto* l = new QLabel(cut < 0 ? lines[i] : lines[i].left(cut + currency.size()), this);
        l->setObjectName(QLatin1String(names[i]));
        l->setFont(f);
        if (i == 4)
            Tone::set(l, "alerta");
        if (cut < 0) {
            grid->addWidget(l, i, 0, 1, 2);
            continue;
        }
        grid->addWidget(l, i, 0);
        auto* amount = new QLabel(lines[i].mid(cut + currency.size()).trimmed(), this);
        amount->setObjectName(QLatin1String(names[i]) + QStringLiteral("Valor"));
        amount->setFont(f);
        amount->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        amount->setMinimumWidth(
            amount->fontMetrics().horizontalAdvance(QStringLiteral("00.000.000,00")));
        grid->addWidget(amount, i, 1);
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
    tell(m_dialogs, SystemTexts::notice(SystemText::SaiaPeloOk));
}

void frmAcrescimos::closeEvent(QCloseEvent* event) {
    if (m_ok) {
        event->accept();
        return;
    }
    event->ignore();
    tell(m_dialogs, SystemTexts::notice(SystemText::SaiaPeloOk));
}
