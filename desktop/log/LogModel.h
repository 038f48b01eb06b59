// The lines of the application's log, the earlier files of it first.
#pragma once

#include <QAbstractTableModel>
#include <QString>
#include <vector>

namespace corvane::desktop {

struct LogLine {
    QString sTime;
    QString sWhere; // module and procedure
    QString sNumber;
    QString sText;
    QString sContext;
    QString sRaw; // as it stands in the file
};

// A line that isn't one of the log's own comes as a text alone.
[[nodiscard]] LogLine ParseLogLine(const QString& sLine);

class LogModel final : public QAbstractTableModel {
    Q_OBJECT
public:
    enum Column { Time, Text, Where, Number, Context, ColumnCount };

    // Reads the log and the files that were turned over, when they have changed since.
    explicit LogModel(QString sLogFile, QObject* pParent = nullptr);
    void Read();
    [[nodiscard]] const std::vector<LogLine>& Lines() const { return m_aLines; }

    [[nodiscard]] int rowCount(const QModelIndex& oParent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& oParent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& oIndex, int nRole) const override;
    [[nodiscard]] QVariant headerData(int nSection, Qt::Orientation eOrientation, int nRole) const override;

private:
    QString m_sLogFile;
    QString m_sStamp; // size and time of the files that were read
    std::vector<LogLine> m_aLines;
};

} // namespace corvane::desktop
