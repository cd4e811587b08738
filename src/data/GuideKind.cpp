#include "GuideKind.h"

GuideKind::Padrao GuideKind::padraoOf(const QString& letter) {
    const QString l = letter.trimmed().toUpper();
    if (l == QLatin1String("F"))
        return Padrao::Febraban;
    if (l == QLatin1String("C"))
        return Padrao::Cnab;
    if (l == QLatin1String("S"))
        return Padrao::Especie;
    return Padrao::Outro;
}
