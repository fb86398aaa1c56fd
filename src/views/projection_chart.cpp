#include "views/projection_chart.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>
#include <limits>

namespace ira::views {
namespace {

constexpr double kNoFigure = std::numeric_limits<double>::quiet_NaN();

double Figure(const std::string& cell) {
  QString text = QString::fromStdString(cell).trimmed();
  text.remove(QLatin1Char(','));
  if (text.endsWith(QLatin1Char('*'))) text.chop(1);
  bool ok = false;
  const double value = text.toDouble(&ok);
  return ok ? value : kNoFigure;
}

std::vector<double> Figures(const std::vector<std::string>& row, std::size_t years) {
  std::vector<double> values(years, kNoFigure);
  for (std::size_t y = 0; y < years && y + 1 < row.size(); ++y) values[y] = Figure(row[y + 1]);
  return values;
}

// A round step for about five ticks up to `top`.
double TickStep(double top) {
  const double raw = top / 5.0;
  const double magnitude = std::pow(10.0, std::floor(std::log10(raw)));
  for (const double m : {1.0, 2.0, 2.5, 5.0, 10.0})
    if (raw <= m * magnitude) return m * magnitude;
  return 10.0 * magnitude;
}

QString ShortAmount(double value) {
  const double a = std::fabs(value);
  if (a >= 1e12) return QStringLiteral("$%1T").arg(value / 1e12, 0, 'g', 4);
  if (a >= 1e9) return QStringLiteral("$%1B").arg(value / 1e9, 0, 'g', 4);
  if (a >= 1e6) return QStringLiteral("$%1M").arg(value / 1e6, 0, 'g', 4);
  if (a >= 1e3) return QStringLiteral("$%1K").arg(value / 1e3, 0, 'g', 4);
  return QStringLiteral("$%1").arg(value, 0, 'f', 0);
}

QColor SeriesColor(std::size_t i) {
  static const QColor colors[] = {QColor(31, 119, 180), QColor(255, 127, 14), QColor(44, 160, 44),
                                  QColor(214, 39, 40),  QColor(148, 103, 189), QColor(140, 86, 75),
                                  QColor(227, 119, 194), QColor(188, 189, 34), QColor(23, 190, 207)};
  return colors[i % std::size(colors)];
}

// One panel: a title, the amount axis and a line per series.
void Panel(QPainter& p, const QRectF& area, const QString& title, const ProjectionChartData& data,
           std::vector<double> ChartSeries::*values) {
  const QFontMetricsF fm(p.font());
  double top = 0;
  const auto consider = [&](const ChartSeries& s) {
    for (const double v : s.*values)
      if (!std::isnan(v)) top = std::max(top, v);
  };
  for (const ChartSeries& s : data.accounts) consider(s);
  consider(data.total);
  if (top <= 0) top = 1;
  const double step = TickStep(top);
  top = std::ceil(top / step) * step;

  const double labelWidth = fm.horizontalAdvance(ShortAmount(top)) + fm.averageCharWidth() * 2;
  const QRectF plot(area.left() + labelWidth, area.top() + fm.height() * 1.5, area.width() - labelWidth - fm.averageCharWidth() * 2,
                    area.height() - fm.height() * 3.2);
  p.setPen(Qt::black);
  p.drawText(QRectF(area.left(), area.top(), area.width(), fm.height() * 1.4), Qt::AlignHCenter | Qt::AlignTop, title);
  if (plot.width() <= 0 || plot.height() <= 0) return;

  // Amount grid lines and labels.
  const std::size_t n = data.years.size();
  const auto x = [&](std::size_t y) { return n < 2 ? plot.center().x() : plot.left() + plot.width() * static_cast<double>(y) / static_cast<double>(n - 1); };
  const auto yOf = [&](double v) { return plot.bottom() - plot.height() * v / top; };
  for (double v = 0; v <= top + step / 2; v += step) {
    p.setPen(QPen(QColor(220, 220, 220), 0));
    p.drawLine(QPointF(plot.left(), yOf(v)), QPointF(plot.right(), yOf(v)));
    p.setPen(Qt::black);
    p.drawText(QRectF(area.left(), yOf(v) - fm.height() / 2, labelWidth - fm.averageCharWidth(), fm.height()),
               Qt::AlignRight | Qt::AlignVCenter, ShortAmount(v));
  }
  // Years along the bottom, thinned so their labels do not collide.
  const double yearWidth = fm.horizontalAdvance(QStringLiteral("0000 "));
  const std::size_t every = std::max<std::size_t>(1, static_cast<std::size_t>(std::ceil(yearWidth * static_cast<double>(n) / plot.width())));
  for (std::size_t y = 0; y < n; y += every) {
    p.drawText(QRectF(x(y) - yearWidth, plot.bottom() + 2, yearWidth * 2, fm.height()), Qt::AlignHCenter | Qt::AlignTop,
               QString::number(data.years[y]));
  }
  p.setPen(QPen(Qt::black, 0));
  p.drawLine(plot.bottomLeft(), plot.bottomRight());
  p.drawLine(plot.bottomLeft(), plot.topLeft());

  const auto line = [&](const ChartSeries& s, const QPen& pen) {
    QPainterPath path;
    bool open = false;
    const std::vector<double>& v = s.*values;
    for (std::size_t y = 0; y < n && y < v.size(); ++y) {
      if (std::isnan(v[y])) {
        open = false;  // a gap where the report has no figure
        continue;
      }
      const QPointF point(x(y), yOf(v[y]));
      if (open) path.lineTo(point); else path.moveTo(point);
      open = true;
      p.setPen(QPen(pen.color(), 0));
      p.setBrush(pen.color());
      p.drawEllipse(point, pen.widthF() * 0.9, pen.widthF() * 0.9);
    }
    p.setBrush(Qt::NoBrush);
    p.setPen(pen);
    p.drawPath(path);
  };
  const double unit = std::max(1.0, fm.height() / 9.0);
  for (std::size_t i = 0; i < data.accounts.size(); ++i) line(data.accounts[i], QPen(SeriesColor(i), unit * 1.5));
  if (data.accounts.size() > 1) line(data.total, QPen(Qt::black, unit * 2.5));
}

}  // namespace

ProjectionChartData ChartDataOf(const reports::GridReport& grid) {
  ProjectionChartData data;
  if (grid.cells.empty()) return data;
  for (std::size_t c = 1; c < grid.cells[0].size(); ++c) {
    bool ok = false;
    const int year = QString::fromStdString(grid.cells[0][c]).trimmed().toInt(&ok);
    if (ok) data.years.push_back(year);
  }
  const std::size_t years = data.years.size();
  data.total.name = QStringLiteral("Total");
  for (std::size_t r = static_cast<std::size_t>(std::max(grid.fixedRows, 0)); r < grid.cells.size(); ++r) {
    const auto& row = grid.cells[r];
    if (row.empty()) continue;
    const std::string& label = row[0];
    if (label == "Beg. Balance" && r > 0) {
      data.accounts.push_back({QString::fromStdString(grid.cells[r - 1][0]).trimmed(), {}, {}});
    } else if (label == "Distributions" && !data.accounts.empty()) {
      data.accounts.back().distribution = Figures(row, years);
    } else if (label == "Ending Balance" && !data.accounts.empty()) {
      data.accounts.back().balance = Figures(row, years);
    } else if (label == "Total Distributions for Year") {
      data.total.distribution = Figures(row, years);
    } else if (label == "Combined Ending Balance") {
      data.total.balance = Figures(row, years);
    }
  }
  // Years past the end of the projection hold no figures at all.
  while (!data.years.empty()) {
    const std::size_t last = data.years.size() - 1;
    const auto has = [last](const std::vector<double>& v) { return last < v.size() && !std::isnan(v[last]); };
    if (has(data.total.balance) || has(data.total.distribution)) break;
    data.years.pop_back();
  }
  return data;
}

void PaintProjectionChart(QPainter& p, const QRectF& area, const ProjectionChartData& data) {
  p.save();
  p.setRenderHint(QPainter::Antialiasing);
  const QFontMetricsF fm(p.font());
  if (data.Empty()) {
    p.drawText(area, Qt::AlignCenter, QStringLiteral("No projected years to chart."));
    p.restore();
    return;
  }
  // The legend: a swatch and a name per account, then the total.
  double x = area.left();
  double y = area.top();
  const double swatch = fm.height() * 1.6;
  const auto entry = [&](const QString& name, const QColor& color, double width) {
    const double w = swatch + fm.horizontalAdvance(name) + fm.averageCharWidth() * 3;
    if (x + w > area.right() && x > area.left()) {
      x = area.left();
      y += fm.height() * 1.3;
    }
    p.setPen(QPen(color, width));
    p.drawLine(QPointF(x, y + fm.height() / 2), QPointF(x + swatch - fm.averageCharWidth(), y + fm.height() / 2));
    p.setPen(Qt::black);
    p.drawText(QPointF(x + swatch, y + fm.ascent()), name);
    x += w;
  };
  const double unit = std::max(1.0, fm.height() / 9.0);
  for (std::size_t i = 0; i < data.accounts.size(); ++i) entry(data.accounts[i].name, SeriesColor(i), unit * 1.5);
  if (data.accounts.size() > 1) entry(data.total.name, Qt::black, unit * 2.5);
  y += fm.height() * 1.8;

  const double half = (area.bottom() - y) / 2;
  Panel(p, QRectF(area.left(), y, area.width(), half), QStringLiteral("Ending balance by year"), data,
        &ChartSeries::balance);
  Panel(p, QRectF(area.left(), y + half, area.width(), half), QStringLiteral("Distributions by year"), data,
        &ChartSeries::distribution);
  p.restore();
}

ProjectionChart::ProjectionChart(ProjectionChartData figures, QWidget* parent)
    : QWidget(parent), m_data(std::move(figures)) {
  setObjectName(QStringLiteral("chtProjection"));
  setBackgroundRole(QPalette::Base);
  setAutoFillBackground(true);
  setMinimumSize(360, 260);
}

void ProjectionChart::paintEvent(QPaintEvent*) {
  QPainter p(this);
  PaintProjectionChart(p, QRectF(rect()).adjusted(12, 10, -12, -8), m_data);
}

}  // namespace ira::views
