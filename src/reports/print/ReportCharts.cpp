#include "ReportCharts.h"

#include "PeriodReport.h"

#include <QBarCategoryAxis>
#include <QBarSeries>
#include <QBarSet>
#include <QChart>
#include <QGraphicsLayout>
#include <QGraphicsScene>
#include <QPainter>
#include <QPieSeries>
#include <QPieSlice>
#include <QValueAxis>

namespace {

constexpr int kScale = 2; // pictures drawn at twice their size on the page, for print

double reais(const Money& m) {
    return double(m.units()) / double(Money::kUnitsPerReal);
}

// Draws a chart the scene owns into a white picture.
QImage render(QChart* chart, QSize size) {
    chart->setAnimationOptions(QChart::NoAnimation);
    chart->setBackgroundRoundness(0);
    chart->resize(size);
    QGraphicsScene scene;
    scene.addItem(chart);
    chart->layout()->activate();
    QImage image(size * kScale, QImage::Format_ARGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    scene.render(&painter, QRectF(QPointF(0, 0), QSizeF(image.size())),
                 QRectF(QPointF(0, 0), QSizeF(size)));
    return image;
}

QImage bars(const QString& title, const QStringList& labels, const QList<double>& values,
            const QString& setName, QSize size) {
    auto* set = new QBarSet(setName);
    double top = 0;
    for (double v : values) {
        *set << v;
        top = std::max(top, v);
    }
    set->setColor(QColor(0x2e, 0x6d, 0xb4));
    auto* series = new QBarSeries;
    series->append(set);
    auto* chart = new QChart;
    chart->setTitle(title);
    chart->addSeries(series);
    chart->legend()->hide();
    auto* x = new QBarCategoryAxis;
    x->append(labels);
    auto* y = new QValueAxis;
    y->setRange(0, top > 0 ? top * 1.1 : 1);
    y->applyNiceNumbers();
    y->setLabelFormat(QStringLiteral("%.0f"));
    chart->addAxis(x, Qt::AlignBottom);
    chart->addAxis(y, Qt::AlignLeft);
    series->attachAxis(x);
    series->attachAxis(y);
    return render(chart, size);
}

} // namespace

QImage ReportCharts::dias(const PeriodReport& p, QSize size) {
    QStringList labels;
    QList<double> values;
    for (const PeriodReport::Day& d : p.dias) {
        labels << d.data.toString(QStringLiteral("dd/MM"));
        values << reais(d.figuras.todos.total);
    }
    return bars(QStringLiteral("Total recebido por dia (R$)"), labels, values,
                QStringLiteral("Total"), size);
}

QImage ReportCharts::horas(const PeriodReport& p, QSize size) {
    // From the first to the last hour that had a receipt, so the busy hours are wide enough.
    int first = 23;
    int last = 0;
    for (int h = 0; h < 24; ++h)
        if (p.porHora[size_t(h)].quantidade > 0) {
            first = std::min(first, h);
            last = std::max(last, h);
        }
    // At least the office hours, so one busy hour does not fill the whole chart.
    first = std::min(first, 8);
    last = std::max(last, 17);
    QStringList labels;
    QList<double> values;
    for (int h = first; h <= last; ++h) {
        labels << QStringLiteral("%1h").arg(h, 2, 10, QLatin1Char('0'));
        values << double(p.porHora[size_t(h)].quantidade);
    }
    return bars(QStringLiteral("Recebimentos por hora do dia (quantidade)"), labels, values,
                QStringLiteral("Recebimentos"), size);
}

QImage ReportCharts::tipos(const PeriodReport& p, QSize size) {
    auto* series = new QPieSeries;
    for (const ReceiptFigures::Kind& k : p.porTipo) {
        if (k.total.isNegative() || k.total.isZero())
            continue;
        series->append(k.descricao, reais(k.total));
    }
    // Small slices keep their name in the legend only: their labels would pile up.
    for (QPieSlice* s : series->slices()) {
        s->setLabelVisible(s->percentage() >= 0.05);
        s->setLabel(QStringLiteral("%1: %2%").arg(
            s->label(), QString::number(100.0 * s->percentage(), 'f', 1)
                            .replace(QLatin1Char('.'), QLatin1Char(','))));
    }
    series->setPieSize(0.6);
    auto* chart = new QChart;
    chart->setTitle(QStringLiteral("Parte de cada tipo de guia no total"));
    chart->addSeries(series);
    chart->legend()->setAlignment(Qt::AlignRight);
    return render(chart, size);
}
