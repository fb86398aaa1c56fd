#include "views/grid_export.h"

#include <QRegularExpression>
#include <QSaveFile>
#include <QStringList>

#include "core/base/messages.h"
#include "core/reports/display_master.h"
#include "core/scenario/scenario.h"

namespace ira::views {
namespace {

QString CsvField(const std::string& cell) {
  QString text = QString::fromStdString(cell);
  text.replace(QStringLiteral("\r\n"), QStringLiteral(" "));
  text = text.trimmed();
  // An amount goes to the spreadsheet as a number: 1,234.56 becomes 1234.56.
  static const QRegularExpression amount(QStringLiteral("^-?[0-9]{1,3}(,[0-9]{3})*\\.[0-9]{2}$"));
  if (amount.match(text).hasMatch()) text.remove(QLatin1Char(','));
  if (text.contains(QLatin1Char(',')) || text.contains(QLatin1Char('"')) || text.contains(QLatin1Char('\n'))) {
    text.replace(QStringLiteral("\""), QStringLiteral("\"\""));
    text = QLatin1Char('"') + text + QLatin1Char('"');
  }
  return text;
}

// Notices of a report computed again are answered unseen.
class QuietMessages final : public MessageSink {
 public:
  MsgAnswer Show(const Message& message) override { return DefaultAnswer(message.buttons); }
};

}  // namespace

QString GridCsv(const reports::GridReport& grid) {
  QString csv;
  for (const auto& row : grid.cells) {
    QStringList fields;
    for (const std::string& cell : row) fields << CsvField(cell);
    csv += fields.join(QLatin1Char(',')) + QStringLiteral("\r\n");
  }
  return csv;
}

QString GridTsv(const reports::GridReport& grid) {
  QString tsv;
  for (const auto& row : grid.cells) {
    QStringList fields;
    for (const std::string& cell : row) fields << QString::fromStdString(cell).replace(QStringLiteral("\r\n"), QStringLiteral(" ")).trimmed();
    tsv += fields.join(QLatin1Char('\t')) + QLatin1Char('\n');
  }
  return tsv;
}

bool SaveGridCsv(const reports::GridReport& grid, const QString& path) {
  QSaveFile file(path);
  const QByteArray bytes = GridCsv(grid).toUtf8();
  if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit()) {
    ShowMessage("WARNING", "The file " + path.toStdString() + " cannot be written: " + file.errorString().toStdString(),
                MsgIcon::Exclamation);
    return false;
  }
  return true;
}

std::optional<reports::GridReport> ReportGrid(int flag) {
  if (flag == reports::kRptProjection && !reports::ProjectionModeOn()) return std::nullopt;
  // The report may write into the scenario as it computes; the copy goes back.
  struct Restore {
    Scenario saved = TheScenario();
    MessageSink& previous = Messages();
    ~Restore() {
      SetMessageSink(&previous);
      TheScenario() = saved;
    }
  } restore;
  QuietMessages quiet;
  SetMessageSink(&quiet);
  reports::TextSink sink(reports::ReportMode::View);
  for (const reports::ReportEntry& entry : reports::Reports())
    if (entry.flag == flag && entry.routine) entry.routine(sink);
  if (!sink.HasGrid()) return std::nullopt;
  return sink.Grid();
}

}  // namespace ira::views
