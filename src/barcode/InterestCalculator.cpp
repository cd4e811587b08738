#include "InterestCalculator.h"

namespace {
std::optional<double> rate(const QString& text) {
    const auto m = Money::parse(text);
    if (!m || m->isNegative() || text.count(QLatin1Char(',')) > 1)
        return std::nullopt;
    return m->toDouble();
}
} // namespace

InterestCalculator::Result InterestCalculator::calcular(const Input& in) {
    Result r;
    if (in.opcao < 1 || in.opcao > 3) {
        r.erro = QStringLiteral("Uma opção deve ser selecionada!!!");
        return r;
    }
    if (!in.vencimento.isValid() || !in.hoje.isValid() || in.vencimento > in.hoje) {
        r.erro = QStringLiteral("A data de vencimento não pode ser inferior a data atual!!!");
        return r;
    }
    const auto prestacao = Money::parse(in.prestacao);
    if (in.prestacao.trimmed().isEmpty() || in.prestacao.count(QLatin1Char(',')) > 1 ||
        !prestacao || prestacao->isNegative() || prestacao->isZero()) {
        r.erro = QStringLiteral("Valor da prestação deve ser informada!!!");
        return r;
    }
    const auto taxa = rate(in.taxa);
    if (in.taxa.trimmed().isEmpty() || !taxa) {
        r.erro = QStringLiteral("Valor do juros deve ser informado!!!");
        return r;
    }
    const auto meses = Acrescimos::Meses_atraso(in.vencimento, in.hoje);
    if (!meses || !Acrescimos::calculavel(in.vencimento, *prestacao)) {
        r.erro = QStringLiteral("Atraso grande demais para calcular.");
        return r;
    }
    r.dias = int(in.vencimento.daysTo(in.hoje));
    r.meses = *meses;
    const double base = prestacao->toDouble();
    if (in.opcao == 1) {
        r.juros = Money::fromDoubleRounded(base * (*taxa * r.dias) / 100.0);
    } else if (in.opcao == 2) {
        float fine = float(*taxa * r.dias);
        if (fine > 10.0f)
            fine = 10.0f;
        r.multa = Money::fromDoubleRounded(base * double(fine) / 100.0);
        r.juros = Money::fromDoubleRounded(base * r.meses / 100.0);
    } else {
        r.multa = Money::fromDoubleRounded(base * 2.0 / 100.0);
        r.juros = Money::fromDoubleRounded(base * r.meses / 100.0);
    }
    r.total = *prestacao + r.multa + r.juros;
    if (!r.total.withinLimit())
        r.erro = QStringLiteral("Atraso grande demais para calcular.");
    return r;
}
