#include "BrazilianLocale.h"

#include <QLocale>

void BrazilianLocale::apply() {
    QLocale::setDefault(QLocale(QLocale::Portuguese, QLocale::Brazil));
}
