// A printout: what has been added to it, laid out for a printer's paper when it is drawn.
#pragma once

#include "desktop/IPrintout.h"

#include <QCoreApplication>
#include <QFont>
#include <functional>
#include <memory>
#include <vector>

class QPrinter;

namespace corvane::desktop {

class Sheets;

// The device that is laid out for, with the font of texts on it.
struct Paper {
    QFont font;
    QPaintDevice* device;
    double line;  // of the font, in dots
    double scale; // dots for one of the screen's at 96 dots per inch
};

class PrintoutPart {
public:
    virtual ~PrintoutPart() = default;
    virtual void LayOut(Sheets& sheets, const Paper& paper) const = 0;
    // Whether it is better off on paper that is wider than high.
    [[nodiscard]] virtual bool IsWide(const Paper& /*paper*/, double /*width*/) const { return false; }
};

class Printout final : public IPrintout {
    Q_DECLARE_TR_FUNCTIONS(Printout)
public:
    Printout();
    ~Printout() override;

    void AddHeading(const QString& text) override;
    void AddText(const QString& text) override;
    void AddDocument(const QTextDocument& document) override;
    void AddField(const QString& label, const QString& value) override;
    void AddTable(const QAbstractItemModel& model) override;
    void AddPicture(const QSizeF& size, const std::function<void(QPainter&, const QRectF&)>& draw) override;
    void AddWidget(QWidget& widget) override;
    void StartSheet() override;
    void Add(std::unique_ptr<PrintoutPart> part) { m_parts.push_back(std::move(part)); }

    // Turns the paper so that it suits the content.
    void ChooseOrientation(QPrinter& printer) const;
    // Called for each sheet that is laid out, with 0 for all, and for each that is drawn; false ends the work.
    using Watch = std::function<bool(std::size_t sheet, std::size_t all)>;
    // Draws the sheets that the printer is to print: all, or those from fromPage to toPage. A preview lays out and
    // draws only the first hundred, and their feet don't say how many there are if there are more. Returns how many
    // have been laid out; 0 after the watch has ended it, and the printer's work is aborted then.
    std::size_t Paint(QPrinter& printer, const QString& title, const Watch& watch = {}) const;

private:
    [[nodiscard]] bool LayOut(Sheets& sheets, const Paper& paper) const;

    std::vector<std::unique_ptr<PrintoutPart>> m_parts;
};

} // namespace corvane::desktop
