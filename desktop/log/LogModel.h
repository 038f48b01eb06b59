// The lines of the application's log, the earlier files of it first.
#pragma once

#include <QAbstractTableModel>
#include <QString>
#include <vector>

namespace corvane::desktop {

struct LogLine {
    QString time;
    QString where; // module and procedure
    QString number;
    QString text;
    QString context;
    QString raw; // as it is in the file
};

// A line that isn't one of the log's own comes as a text alone.
[[nodiscard]] LogLine ParseLogLine(const QString& line);

class LogModel final : public QAbstractTableModel {
    Q_OBJECT
public:
    enum Column { Time, Text, Where, Number, Context, ColumnCount };

    // Reads the log and the files that were turned over, when they have changed since.
    explicit LogModel(QString logFile, QObject* parent = nullptr);
    void Read();
    [[nodiscard]] const std::vector<LogLine>& Lines() const { return m_lines; }

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    QString m_logFile;
    QString m_stamp; // size and time of the files that were read
    std::vector<LogLine> m_lines;
};

} // namespace corvane::desktop
