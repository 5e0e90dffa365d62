// Types the columns of a timing sheet into new columns, by key events, and prints the keys that stand
// then. For trying the sheet on real cuts.
//
//     type_sheet SHEET.csv PROJECT COLUMN DRAWING [COLUMN DRAWING ...]
//
// SHEET    a table whose second line names the columns; a line a frame follows, with a name that ends
//          in digits where the drawing changes. Every other text, an inbetween's mark say, holds.
// PROJECT  the composition is saved there; it is to be rendered or looked at
// DRAWING  any one file of the column's series. The blank drawing is written beside it: work on copies

#include "TimingSheet.h"
#include "TraceLinesOff.h"

#include "core/ProjectFile.h"

#include <QApplication>
#include <QFile>
#include <QRegularExpression>

#include <cstdio>

namespace {

using Table = QVector<QStringList>;

Table ReadTable(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    Table table;
    const QList<QByteArray> lines = file.readAll().split('\n');
    for (const QByteArray &line : lines) {
        QStringList cells = QString::fromLatin1(line.trimmed()).split(QLatin1Char(','));
        for (QString &cell : cells)
            cell.remove(QLatin1Char('"'));
        if (!line.trimmed().isEmpty())
            table << cells;
    }
    return table;
}

/// @param row of the table, where the first frame's is 2
int NumberAt(const Table &table, int row, int column)
{
    static const QRegularExpression digits(QStringLiteral("([0-9]+)$"));
    const QRegularExpressionMatch match = digits.match(table[row].value(column));
    return match.hasMatch() ? match.captured(1).toInt() : -1;
}

Timing ReadTiming(const Table &table, const QString &name)
{
    Timing timing;
    const int column = table.value(1).indexOf(name);
    for (int row = 2; column > 0 && row < table.size(); ++row) {
        const int number = NumberAt(table, row, column);
        if (number >= 0)
            timing << testing::KeyAt{ row - 2, number };
    }
    return timing;
}

void PrintKeys(const char *title, const Keys &keys)
{
    std::printf("%s, %d:", title, keys.size());
    for (const testing::KeyAt &key : keys)
        std::printf(" %d:%d", key.frame, key.image);
    std::printf("\n");
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", VN_OFFSCREEN);
    const QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const Table table = ReadTable(arguments.value(1));
    if (arguments.size() < 5 || arguments.size() % 2 == 0 || table.size() < 3) {
        std::fprintf(stderr, "usage: type_sheet SHEET.csv PROJECT COLUMN DRAWING ...\n");
        return 2;
    }
    const TraceLinesOff quiet;
    TimingSheet sheet(table.size() - 2);
    QVector<Timing> timings;
    for (int i = 3; i < arguments.size(); i += 2) {
        timings << ReadTiming(table, arguments[i]);
        const QString wrong = sheet.AddColumn(arguments[i + 1]);
        if (timings.last().isEmpty() || !wrong.isEmpty()) {
            std::fprintf(
                stderr, "%s: no timing, or: %s\n", qPrintable(arguments[i]), qPrintable(wrong));
            return 1;
        }
    }
    sheet.Show();
    for (int col = 0; col < timings.size(); ++col) {
        sheet.Type(col, timings[col]);
        std::printf("column %s\n", qPrintable(arguments[3 + 2 * col]));
        PrintKeys("  written on paper", timings[col]);
        PrintKeys("  keys that stand ", sheet.RemapKeys(sheet.LayerOf(col).id));
    }
    const QString wrong = rostrum::SaveProject(sheet.host.GetProject(), arguments[2]);
    if (!wrong.isEmpty())
        std::fprintf(stderr, "%s\n", qPrintable(wrong));
    return wrong.isEmpty() ? 0 : 1;
}
