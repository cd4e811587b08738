#pragma once

#include <QString>
#include <QStringList>

class QComboBox;
class QLineEdit;
class QTreeWidget;
class QWidget;
class AppContext;

// Widgets the two cash-count screens share.
namespace CountWidgets {

QLineEdit* amountField(QWidget* parent, const char* name);
QTreeWidget* linesList(QWidget* parent);
void fillEspecies(QComboBox* combo, AppContext& ctx);
QString key(qint32 id); // "0000"

} // namespace CountWidgets
