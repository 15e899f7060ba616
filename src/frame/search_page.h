#pragma once
#include "frame/search_spec.h"
#include <QWidget>

class QCheckBox;
class QFrame;
class QLabel;
class QPushButton;
class QRadioButton;

namespace liaowu {

class BrowseGrid;
class EntryField;
class Process;

/// The search page: a result list, and a panel of conditions that comes before it. What was typed stays from one visit to
/// the next until the record is entered anew.
class SearchPage : public QWidget {
    Q_OBJECT
public:
    SearchPage(Process& process, SearchSpec spec, QWidget* parent);
    /// Shows the page and searches; `afresh` starts at the first condition.
    void open(bool afresh);

Q_SIGNALS:
    void chosen(const QString& key);
    void back();
    void found(int rows);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buildPanel();
    void showPanel(bool shown);
    void chooseOption(int option);
    void run();
    void fillDates();
    void rememberTexts();
    void choose(int row);
    SearchInput input() const;

    Process& process;
    SearchSpec spec;
    BrowseGrid* grid;
    QFrame* panel;
    std::vector<QRadioButton*> options;
    std::vector<QCheckBox*> checks;
    EntryField* text;
    QLabel* textLabel;
    EntryField *from, *to;
    QWidget* dates;
    QPushButton *toPanel, *toRecord, *toBack;
    int searchOption = 0;
    QStringList kept;        ///< what each option's box held
    bool datesKnown = false; ///< the date boxes were filled once
};

} // namespace liaowu
