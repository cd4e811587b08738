#include "CommandRibbon.h"

#include <QAction>
#include <QHBoxLayout>
#include <QRegularExpression>
#include <QTabBar>
#include <QToolButton>

CommandRibbon::CommandRibbon(QWidget* actionsOwner, QWidget* parent)
    : QTabWidget(parent), m_owner(actionsOwner) {
    setObjectName(QStringLiteral("CommandRibbon"));
    setFocusPolicy(Qt::NoFocus);
    tabBar()->setFocusPolicy(Qt::NoFocus); // the keyboard stays with the counter's entry
    setDocumentMode(true);
    QFont f = tabBar()->font();
    f.setPointSize(f.pointSize() + 1);
    f.setBold(true);
    tabBar()->setFont(f);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void CommandRibbon::splitText(const QString& text, QString* caption, QString* key) {
    static const QRegularExpression keyed(QStringLiteral("^(.*?)\\s*\\(([^()]+)\\)\\s*$"));
    QString plain = text;
    plain.remove(QLatin1Char('&'));
    plain.remove(QStringLiteral("..."));
    const auto m = keyed.match(plain);
    if (caption)
        *caption = (m.hasMatch() ? m.captured(1) : plain).trimmed();
    if (key)
        *key = m.hasMatch() ? m.captured(2).trimmed() : QString();
}

QString CommandRibbon::wrapped(const QString& caption) {
    // A long caption takes two lines, broken at the blank nearest its middle, so a row of
    // buttons fits the counter's width without cutting words.
    if (caption.size() <= 14)
        return caption;
    int best = -1;
    for (int i = 0; i < caption.size(); ++i)
        if (caption.at(i) == QLatin1Char(' ') &&
            (best < 0 || qAbs(i - caption.size() / 2) < qAbs(best - caption.size() / 2)))
            best = i;
    return best < 0 ? caption : caption.left(best) + QLatin1Char('\n') + caption.mid(best + 1);
}

int CommandRibbon::addGroup(const QString& title) {
    auto* page = new QWidget(this);
    auto* row = new QHBoxLayout(page);
    row->setContentsMargins(6, 6, 6, 6);
    row->setSpacing(6);
    row->addStretch();
    return addTab(page, title);
}

QToolButton* CommandRibbon::makeButton(QAction* action, const QString& caption, const QString& key,
                                       QWidget* parent) {
    QString c, k;
    splitText(action->text(), &c, &k);
    if (!caption.isEmpty())
        c = caption;
    if (!key.isEmpty())
        k = key;
    auto* b = new QToolButton(parent);
    b->setObjectName(QStringLiteral("rib") + action->objectName());
    b->setText(k.isEmpty() ? wrapped(c) : wrapped(c) + QLatin1Char('\n') + k);
    b->setToolTip(k.isEmpty() ? c : c + QStringLiteral(" (") + k + QLatin1Char(')'));
    b->setToolButtonStyle(Qt::ToolButtonTextOnly);
    b->setFocusPolicy(Qt::NoFocus);
    b->setMinimumSize(96, 58);
    b->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    QFont f = b->font();
    f.setPointSize(f.pointSize() + 1);
    b->setFont(f);
    b->setEnabled(action->isEnabled());
    connect(b, &QToolButton::clicked, action, &QAction::trigger);
    connect(action, &QAction::changed, b, [b, action] { b->setEnabled(action->isEnabled()); });
    return b;
}

QToolButton* CommandRibbon::addCommand(int group, const QString& actionName, const QString& caption,
                                       const QString& key) {
    auto* action = m_owner->findChild<QAction*>(actionName);
    QWidget* page = widget(group);
    if (!action || !page)
        return nullptr;
    auto* row = static_cast<QHBoxLayout*>(page->layout());
    QToolButton* b = makeButton(action, caption, key, page);
    row->insertWidget(row->count() - 1, b); // before the closing stretch
    return b;
}

QToolButton* CommandRibbon::standaloneCommand(const QString& actionName, QWidget* parent,
                                              const QString& caption, const QString& key) {
    auto* action = m_owner->findChild<QAction*>(actionName);
    return action ? makeButton(action, caption, key, parent) : nullptr;
}
