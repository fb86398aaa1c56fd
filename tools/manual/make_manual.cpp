// Typesets the user manual: Markdown chapters in, one PDF out.
//
//   make_manual OUTPUT.pdf CHAPTER.md...
//
// Each chapter's first-level heading begins a new page. A title page and a
// table of contents with page numbers come first; every page after the title
// carries its number at the foot. Pictures are given relative to the
// chapter's folder and are shrunk to the width of the text where they are
// wider; a missing picture fails the build. The PDF is written to a temporary
// file and takes the output's name only when complete.
#include <QAbstractTextDocumentLayout>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QImage>
#include <QPageLayout>
#include <QPainter>
#include <QPdfWriter>
#include <QSaveFile>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextFragment>
#include <QTextLayout>
#include <QTextFrame>
#include <QTextTable>
#include <QUrl>
#include <algorithm>
#include <iostream>
#include <vector>

#include "core/base/program.h"

namespace {

constexpr int kResolution = 300;
// Lengths in text formats (margins, tab stops, picture sizes) count in pixels
// of a 96 dpi screen; the layout scales them to the PDF's resolution.
constexpr double kFormatScale = kResolution / 96.0;

struct Entry {
  QString text;
  int level;
  int page;  // in the chapters, from 1
};

QString ReadChapters(int count, char** paths, QString& folder) {
  QString text;
  for (int i = 0; i < count; ++i) {
    QFile f(QString::fromLocal8Bit(paths[i]));
    if (!f.open(QIODevice::ReadOnly)) {
      std::cerr << "make_manual: cannot read " << paths[i] << "\n";
      return {};
    }
    folder = QFileInfo(f).absolutePath();
    text += QString::fromUtf8(f.readAll()) + QStringLiteral("\n\n");
  }
  return text;
}

QFont BodyFont(double points) {
  QFont font;
  font.setFamilies({QStringLiteral("Liberation Sans"), QStringLiteral("Arial"), QStringLiteral("DejaVu Sans")});
  font.setStyleHint(QFont::SansSerif);
  font.setPointSizeF(points);
  return font;
}

void Prepare(QTextDocument& doc, QPdfWriter& writer, const QSizeF& page) {
  doc.documentLayout()->setPaintDevice(&writer);
  doc.setDefaultFont(BodyFont(10.5));
  doc.setPageSize(page);
  doc.setDocumentMargin(0);
}

// Chapters on new pages; headings in sizes of their own, with room above.
// The room is the block before's margin, not the heading's, so that a
// heading carried over to a new page stands at the top of it.
void ShapeHeadings(QTextDocument& doc) {
  QTextCursor cursor(&doc);
  for (QTextBlock b = doc.begin(); b.isValid(); b = b.next()) {
    const int level = b.blockFormat().headingLevel();
    if (level == 0) continue;
    QTextBlockFormat format = b.blockFormat();
    format.setTopMargin(0);
    format.setBottomMargin(level == 1 ? 14 : 4);
    if (level == 1) format.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore);
    cursor.setPosition(b.position());
    cursor.setBlockFormat(format);
    QTextCharFormat text;
    text.setFontPointSize(level == 1 ? 20 : level == 2 ? 14 : 12);
    text.setFontWeight(QFont::Bold);
    cursor.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
    cursor.mergeCharFormat(text);
    const QTextBlock before = b.previous();
    if (level > 1 && before.isValid()) {
      QTextBlockFormat room = before.blockFormat();
      room.setBottomMargin(std::max(room.bottomMargin(), 14.0));
      cursor.setPosition(before.position());
      cursor.setBlockFormat(room);
    }
  }
}

// Tables with thin single rules and some room in the cells.
void ShapeTables(QTextDocument& doc) {
  for (QTextFrame* frame : doc.rootFrame()->childFrames()) {
    auto* table = qobject_cast<QTextTable*>(frame);
    if (table == nullptr) continue;
    QTextTableFormat format = table->format();
    format.setBorder(0.5);
    format.setBorderStyle(QTextFrameFormat::BorderStyle_Solid);
    format.setBorderBrush(QColor(120, 120, 120));
    format.setCellSpacing(0);
    format.setCellPadding(3);
    format.setTopMargin(4);
    format.setBottomMargin(8);
    table->setFormat(format);
  }
}

// Screen pictures at their screen size, but never wider than the text.
// False when a picture is missing.
bool FitPictures(QTextDocument& doc) {
  const double textWidth = doc.pageSize().width() / kFormatScale;
  bool found = true;
  QTextCursor cursor(&doc);
  for (QTextBlock b = doc.begin(); b.isValid(); b = b.next()) {
    for (auto it = b.begin(); !it.atEnd(); ++it) {
      const QTextFragment fragment = it.fragment();
      if (!fragment.charFormat().isImageFormat()) continue;
      QTextImageFormat image = fragment.charFormat().toImageFormat();
      const QImage picture = doc.resource(QTextDocument::ImageResource, QUrl(image.name())).value<QImage>();
      if (picture.isNull()) {
        std::cerr << "make_manual: picture not found: " << image.name().toStdString() << "\n";
        found = false;
        continue;
      }
      const double scale = std::min(1.0, textWidth / picture.width());
      image.setWidth(picture.width() * scale);
      image.setHeight(picture.height() * scale);
      cursor.setPosition(fragment.position());
      cursor.setPosition(fragment.position() + fragment.length(), QTextCursor::KeepAnchor);
      cursor.setCharFormat(image);
    }
  }
  return found;
}

std::vector<Entry> Contents(QTextDocument& doc) {
  std::vector<Entry> entries;
  for (QTextBlock b = doc.begin(); b.isValid(); b = b.next()) {
    const int level = b.blockFormat().headingLevel();
    if (level < 1 || level > 2) continue;
    // A block moved to the next page keeps its place and pushes its lines
    // down: the first line tells the page.
    double top = doc.documentLayout()->blockBoundingRect(b).top();
    if (b.layout() != nullptr && b.layout()->lineCount() > 0) top += b.layout()->lineAt(0).y();
    entries.push_back({b.text(), level, static_cast<int>(top / doc.pageSize().height()) + 1});
  }
  return entries;
}

// The title page, then the contents, whose page numbers count the front
// matter's own `frontPages` pages.
void FrontMatter(QTextDocument& doc, const std::vector<Entry>& entries, int frontPages) {
  doc.clear();
  QTextCursor cursor(&doc);
  QTextBlockFormat centred;
  centred.setAlignment(Qt::AlignHCenter);
  const auto line = [&](const QString& text, double points, bool bold, double above) {
    QTextBlockFormat format = centred;
    format.setTopMargin(above);
    QTextCharFormat chars;
    chars.setFontPointSize(points);
    chars.setFontWeight(bold ? QFont::Bold : QFont::Normal);
    cursor.insertBlock(format, chars);
    cursor.insertText(text, chars);
  };
  // A page's first block takes no margin above it: an empty line of fixed
  // height lowers the title instead.
  QTextBlockFormat space;
  space.setLineHeight(200, QTextBlockFormat::FixedHeight);
  cursor.setBlockFormat(space);
  line(QStringLiteral("QSW - Tallyra"), 32, true, 0);
  line(QStringLiteral("User Manual"), 18, false, 10);
  line(QStringLiteral("Planning the required distributions from individual retirement arrangements"), 11, false, 60);
  line(QStringLiteral("Version: ") + QString::fromStdString(ira::VersionText()), 11, false, 6);
  line(QStringLiteral("Quillon Software Works"), 11, false, 200);

  QTextBlockFormat heading;
  heading.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore);
  heading.setBottomMargin(14);
  QTextCharFormat headingChars;
  headingChars.setFontPointSize(20);
  headingChars.setFontWeight(QFont::Bold);
  cursor.insertBlock(heading, headingChars);
  cursor.insertText(QStringLiteral("Contents"), headingChars);

  const double right = doc.pageSize().width() / kFormatScale - 1;
  for (const Entry& e : entries) {
    QTextBlockFormat format;
    format.setTabPositions({QTextOption::Tab(right, QTextOption::RightTab)});
    format.setTopMargin(e.level == 1 ? 9 : 2);
    QTextCharFormat chars;
    chars.setFontWeight(e.level == 1 ? QFont::Bold : QFont::Normal);
    cursor.insertBlock(format, chars);
    // Sections sit under their chapter; a margin would move the tab stop too.
    const QString indent = e.level == 1 ? QString() : QString(4, QChar(0x00A0));
    cursor.insertText(indent + e.text + QLatin1Char('\t') + QString::number(frontPages + e.page), chars);
  }
}

void PaintPages(QPainter& painter, QPdfWriter& writer, QTextDocument& doc, int firstNumber, double footer,
                bool& firstPage) {
  const QSizeF page = doc.pageSize();
  const QFont footerFont = BodyFont(9);
  for (int p = 0; p < doc.pageCount(); ++p) {
    if (!firstPage) writer.newPage();
    firstPage = false;
    painter.save();
    painter.translate(0, -p * page.height());
    QAbstractTextDocumentLayout::PaintContext context;
    // A line that begins exactly at the foot belongs to the next page.
    context.clip = QRectF(0, p * page.height(), page.width(), page.height() - 1);
    painter.setClipRect(context.clip);
    doc.documentLayout()->draw(&painter, context);
    painter.restore();
    const int number = firstNumber + p;
    if (number > 1) {
      painter.setFont(footerFont);
      painter.drawText(QRectF(0, page.height(), page.width(), footer), Qt::AlignCenter,
                       QStringLiteral("Page %1").arg(number));
    }
  }
}

}  // namespace

int main(int argc, char** argv) {
  QGuiApplication app(argc, argv);
  if (argc < 3) {
    std::cerr << "usage: make_manual OUTPUT.pdf CHAPTER.md...\n";
    return 2;
  }
  QString folder;
  const QString markdown = ReadChapters(argc - 2, argv + 2, folder);
  if (markdown.isEmpty()) return 1;

  QSaveFile out(QString::fromLocal8Bit(argv[1]));
  if (!out.open(QIODevice::WriteOnly)) {
    std::cerr << "make_manual: cannot write " << argv[1] << ": " << out.errorString().toStdString() << "\n";
    return 1;
  }
  QPdfWriter writer(&out);
  writer.setResolution(kResolution);
  writer.setTitle(QStringLiteral("QSW - Tallyra User Manual"));
  writer.setCreator(QStringLiteral("Tallyra"));
  writer.setPageLayout(QPageLayout(QPageSize(QPageSize::Letter), QPageLayout::Portrait,
                                   QMarginsF(0.9, 0.8, 0.9, 0.6), QPageLayout::Inch));
  const double footer = 0.35 * kResolution;
  const QSizeF page(writer.width(), writer.height() - footer);

  QTextDocument chapters;
  Prepare(chapters, writer, page);
  chapters.setBaseUrl(QUrl::fromLocalFile(folder + QLatin1Char('/')));
  chapters.setMarkdown(markdown, QTextDocument::MarkdownDialectGitHub);
  ShapeHeadings(chapters);
  ShapeTables(chapters);
  if (!FitPictures(chapters)) return 1;
  // The markdown's first heading would begin with an empty page.
  QTextCursor first(&chapters);
  QTextBlockFormat firstFormat = chapters.begin().blockFormat();
  firstFormat.setPageBreakPolicy(QTextFormat::PageBreak_Auto);
  first.setBlockFormat(firstFormat);

  const std::vector<Entry> entries = Contents(chapters);
  QTextDocument front;
  Prepare(front, writer, page);
  FrontMatter(front, entries, 0);
  const int frontPages = front.pageCount();
  FrontMatter(front, entries, frontPages);

  QPainter painter;
  bool firstPage = true;
  if (!painter.begin(&writer)) {
    std::cerr << "make_manual: cannot write " << argv[1] << "\n";
    return 1;
  }
  PaintPages(painter, writer, front, 1, footer, firstPage);
  PaintPages(painter, writer, chapters, frontPages + 1, footer, firstPage);
  if (!painter.end() || !out.commit()) {
    std::cerr << "make_manual: cannot write " << argv[1] << "\n";
    return 1;
  }
  return 0;
}
