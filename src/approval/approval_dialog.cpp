#include "approval/approval_dialog.h"
#include "common/guard.h"
#include "common/people.h"
#include "data/recordset.h"
#include "frame/entry_view.h"
#include "frame/lookups.h"
#include "frame/pick_window.h"
#include "frame/process.h"
#include <QDialog>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>

namespace liaowu {

using namespace Qt::StringLiterals;

namespace {

class ApprovalDialog : public QDialog {
public:
    ApprovalDialog(Process& on, QWidget* owner) : QDialog(owner), process(on), session(on.session) {
        setObjectName(u"frm單據審核"_s);
        const bool order = session.scratchText == u"審單";
        setWindowTitle(u"單據審核"_s);
        auto* grid = new QGridLayout(this);
        grid->setContentsMargins(22, 18, 22, 16);
        grid->setVerticalSpacing(12);
        approve = option(u"Opt審核(0)"_s, order ? u"審    單"_s : u"復    核"_s);
        takeBack = option(u"Opt審核(1)"_s, order ? u"取消審單"_s : u"取消復核"_s);
        grid->addWidget(approve, 0, 0, 1, 2);
        grid->addWidget(takeBack, 0, 2, 1, 2);
        code = new EntryField(u"txt業務員代號"_s, this);
        code->setMaxLength(8);
        code->upperCase = true;
        code->setFixedWidth(90);
        name = new EntryField(u"lbl業務員名稱"_s, this);
        name->setFixedWidth(120);
        auto* lookup = new QPushButton(u"業務視窗"_s, this);
        lookup->setObjectName(u"scmd業務員"_s);
        lookup->setAutoDefault(false);
        grid->addWidget(new QLabel(u"經辦人員:"_s, this), 1, 0);
        grid->addWidget(code, 1, 1);
        grid->addWidget(name, 1, 2);
        grid->addWidget(lookup, 1, 3);
        auto* confirm = new QPushButton(u"確 定"_s, this);
        confirm->setObjectName(u"scmd確定"_s);
        auto* cancel = new QPushButton(u"取 消"_s, this);
        cancel->setObjectName(u"scmd取消"_s);
        auto* commands = new QHBoxLayout;
        commands->setSpacing(12);
        commands->addStretch(1);
        for (QPushButton* made : {confirm, cancel}) {
            made->setAutoDefault(true);
            made->setFixedWidth(90);
            commands->addWidget(made);
        }
        commands->addStretch(1);
        grid->addLayout(commands, 2, 0, 1, 4);

        code->showText(session.salesmanCode);
        name->showText(session.salesmanName);
        approve->setEnabled(session.approveAllowed);
        takeBack->setEnabled(session.reverseAllowed);
        (session.approveAllowed ? approve : takeBack)->setChecked(true);
        colourOptions();

        for (QRadioButton* made : {approve, takeBack})
            connect(made, &QRadioButton::toggled, this, [this] { colourOptions(); });
        connect(name, &EntryField::typedInto, this, [this] { code->showText(QString()); });
        connect(lookup, &QPushButton::clicked, this, [this] { pickPerson(QString()); });
        connect(confirm, &QPushButton::clicked, this, [this] { confirmed(); });
        connect(cancel, &QPushButton::clicked, this, [this] { reject(); });
        name->installEventFilter(this);
        code->installEventFilter(this);
        confirm->setFocus();
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() != QEvent::KeyPress) return false;
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key != Qt::Key_Return && key != Qt::Key_Enter) return false;
        if (watched == name) {
            lookUp();
        } else {
            focusNextChild();
        }
        return true;
    }

private:
    QRadioButton* option(const QString& objectName, const QString& caption) {
        auto* made = new QRadioButton(caption, this);
        made->setObjectName(objectName);
        return made;
    }

    void colourOptions() {
        for (QRadioButton* made : {approve, takeBack})
            made->setStyleSheet(made->isChecked() ? u"color: #0000ff;"_s : u"color: #808080;"_s);
    }

    void lookUp() {
        const QString text =
            code->text().trimmed().isEmpty() ? name->text().trimmed() : code->text().trimmed();
        bool found = false;
        const bool read = guarded(session, u"依業務代號取得業務資料錯誤"_s, [&] {
            Connection connection(session.pool, session.connectionString);
            const Recordset person = select(connection, personStatement(text));
            if (person.RecordCount() == 0) return;
            code->showText(person.text(u"業務員代號").trimmed());
            name->showText(person.text(u"業務員名稱").trimmed());
            found = true;
        });
        if (read && !found) pickPerson(name->text().trimmed());
    }

    void pickPerson(const QString& text) {
        session.pickParam = text;
        session.formulaMode.clear();
        if (!pickRow(process, personPick(), this)) return;
        code->showText(session.picked(0));
        name->showText(session.picked(1));
    }

    void confirmed() {
        if (approve->isChecked() && name->text().trimmed().size() < 2) {
            session.messages.warn(u"提示"_s, u"[經辦人員]不能為空!"_s);
            name->setFocus();
            return;
        }
        session.approvalDone = true;
        session.scratchB = name->text().trimmed();
        session.scratchA = u"Y"_s;
        if (takeBack->isChecked()) {
            session.scratchA = u"N"_s;
            session.scratchB.clear();
        }
        accept();
    }

    Process& process;
    Session& session;
    QRadioButton *approve, *takeBack;
    EntryField *code, *name;
};

} // namespace

void registerApproval(Process& process) {
    process.registerWindow(u"frm單據審核"_s, [](Process& on, QWidget* owner) {
        on.session.approvalDone = false;
        ApprovalDialog dialog(on, owner);
        on.desktop.runModal(dialog);
    });
}

} // namespace liaowu
