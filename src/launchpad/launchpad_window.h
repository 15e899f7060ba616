#pragma once
#include "data/connection_pool.h"
#include "frame/message_box_view.h"
#include <QWidget>

class QLabel;
class QLineEdit;
class QListWidget;
class QRadioButton;

namespace liaowu {

/// Stands in for the master application: database, user and approval are chosen here, and each launch function starts the
/// client as a process of its own with the launch string shown below.
class LaunchpadWindow : public QWidget {
    Q_OBJECT
public:
    explicit LaunchpadWindow(const QString& target);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void tell(const QString& text, bool fault = false);
    QWidget* buildSettings();
    QWidget* buildFunctions();
    QWidget* buildLaunchLine();
    void loadUsers();
    void chooseFile();
    void start(const QString& function);
    void finished(const QString& function, const QString& output, int code);
    QString launchStringOf(const QString& function) const;

    ConnectionPool pool;
    RealDesktop desktop;
    QLineEdit *database, *secondDatabase, *launchLine;
    QListWidget* users;
    QRadioButton* withApproval;
    QLabel* status;
};

} // namespace liaowu
