// The projection as a chart: each account's ending balance and distribution
// by year, and their totals, drawn with QPainter on screen and on paper from
// the figures of the Projection report's own grid.
#pragma once

#include <QRectF>
#include <QString>
#include <QWidget>
#include <vector>

#include "core/reports/report_sink.h"

class QPainter;

namespace ira::views {

struct ChartSeries {
  QString name;
  std::vector<double> balance;       // ending balance by year; NaN where the report has no figure
  std::vector<double> distribution;  // distribution by year; NaN likewise
};

struct ProjectionChartData {
  std::vector<int> years;
  std::vector<ChartSeries> accounts;
  ChartSeries total;
  bool Empty() const { return years.empty(); }
};

// Reads the years, the accounts' "Distributions" and "Ending Balance" rows and
// the totals rows out of the Projection report's grid.
ProjectionChartData ChartDataOf(const reports::GridReport& grid);

// Balances above, distributions below, a legend on top, within `area`.
void PaintProjectionChart(QPainter& painter, const QRectF& area, const ProjectionChartData& data);

class ProjectionChart : public QWidget {
  Q_OBJECT
 public:
  explicit ProjectionChart(ProjectionChartData figures, QWidget* parent = nullptr);
  QSize sizeHint() const override { return {760, 480}; }
  const ProjectionChartData& Data() const { return m_data; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  ProjectionChartData m_data;
};

}  // namespace ira::views
