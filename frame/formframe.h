#pragma once

#include "framework/companychangehandler.h"
#include "framework/contractpointer.h"
#include "platform/db/connection.h"

#include <QPointer>
#include <QVariant>
#include <QWidget>
#include <functional>
#include <memory>

namespace db {
class Recordset;
}

namespace fw {
class Cinterface;
class GlobalServices;
class LogService;
class ModuleManager;
class RecordFrame;
class ScriptObjectModel;
class WorkflowStateService;
} // namespace fw

// What every form of the module repeats: it takes the host's objects from the entry class,
// opens its own connection on first activation, tells the host's script layer when it opens and
// closes, reports every failure through the host's log service (step), closes on a change of
// the working company, and releases what it holds in a fixed order when it unloads.
//
// A form adds its own behaviour through the protected hooks and keeps its procedures as
// member functions whose fallible statements run through step().
class FormFrame : public QWidget, public fw::CompanyChangeHandler
{
    Q_OBJECT
    Q_INTERFACES(fw::CompanyChangeHandler)

public:
    explicit FormFrame(QWidget *parent = nullptr);
    ~FormFrame() override;

    // --- host link: the host contract and the entry class (source of connection, menu
    // identifiers, rights and caption), set by whoever opens the form
    void setActiveDll(fw::Cinterface *contract);
    fw::Cinterface *ActiveDll() const;
    void setEntryClass(fw::Cinterface *entryClass);
    fw::Cinterface *entryClass() const;

    // --- what the host's navigator reads from the form
    virtual QString formIdentifier() const; // the object name, "FRMGD_..."
    virtual QObject *layoutObject();
    virtual QObject *scriptObject();
    virtual QObject *secondScriptObject(); // null when the form exposes one object only

    // --- display
    // Inside the shell's MDI area when activeFrame is one, else as a window of its own.
    void showModeless(QObject *activeFrame);
    // As an application-modal window centred on the window that was active; returns once the
    // form has unloaded.
    void showModal();

    // --- the frame's operations
    void Form_Load();
    void Form_Activate();
    void InizializzaScriptLayout();
    QVariant ExecuteFormEvent(const QString &name); // "tsOpen" or "tsClose"
    bool EseguiQuery();
    void workingCompanyChanged() override; // the company-change operation
    bool Form_QueryUnload();               // returns cancel
    void Form_UnLoad();
    // Closes the form's window as the user would; true when the form unloaded.
    bool unload();

    // --- error handling
    // Runs one statement of a procedure. A failure goes to the error handler: Retry runs the
    // statement again, Ignore returns true (go on with the next statement), Abort or any other
    // answer returns false (leave the procedure).
    bool step(const QString &procedure, const std::function<void()> &statement);
    // For statements whose failure is skipped silently by rule.
    static bool quietly(const std::function<void()> &statement);
    // Reports the failure description of a procedure and returns the user's choice.
    int ErrorHandler(const QString &procedure, const QString &description,
                     const QList<db::DbError> &databaseErrors = {});
    // A checked write of a row (a recordset's update, a record frame's save). A row that another
    // user changed or removed since it was read is not overwritten, and that is no failure for
    // the error dialog: the connection's errors are cleared and stale() says what the user hears
    // and reads the row again. Any other failure goes through step(). True when it was written.
    bool writeRow(const QString &procedure, const std::function<void()> &write,
                  const std::function<void(const db::DatabaseError &)> &stale);

    // --- messages and questions, through the host's log service with the form's caption
    // The Answer chosen; No without a log service. The title is the form's caption unless given.
    int message(const QString &text, int style, const QString &title = {}) const;
    void avviso(const QString &text) const;   // OK, exclamation icon
    void notifica(const QString &text) const; // OK, information icon
    int domanda(const QString &text) const;   // Yes/No with No as the default
    // A note on work done that asks for nothing, in the host's status bar for a while.
    void mostraInBarraDiStato(const QString &text) const;

    // --- the host's services
    // A text of the host's dictionary by its identifier, or the default; a text translated.
    QString translated(int id, const QString &defaultText) const;
    QString translated(const QString &text) const;
    // The host's module manager; without one the user is told that the management named cannot
    // be opened, and the answer is null.
    fw::ModuleManager *moduleManager(const QString &management) const;

    // --- state read by forms and tests
    fw::GlobalServices *globals() const;
    fw::LogService *logService() const;
    db::ConnectionPtr connection() const { return m_connection; }
    // The host's row states, read and written through the form's connection when the host can
    // give them so: a state stored then belongs to the form's operation. Null without a service.
    std::shared_ptr<fw::WorkflowStateService> statiDelFlusso();
    fw::RecordFrame *recordFrame() const;
    int companyCode() const { return m_companyCode; }
    bool isLoaded() const { return m_loaded; }
    bool isFirstActivation() const { return m_firstActivation; }

signals:
    void unloaded();
    // An operation of the journal was committed (OperazioneStorico).
    void operazioneConclusa();

protected:
    enum class Release { GridWrapper, HelperObjects, FrameworkObjects };

    // Form_Load's own part (sizes, combos); runs under step("Form_Load").
    virtual void loadForm() { }
    // The first activation's own part, after the connection is open; false leaves Form_Activate
    // with the first-activation flag still set.
    virtual bool activateForm() { return true; }
    // EseguiQuery's fixed filter fields, written into the current row before the query.
    virtual void writeFixedFilterFields(db::Recordset &) { }
    // The message of the company-change operation; empty for forms without it.
    virtual QString companyChangeText() const { return {}; }
    // First step of Form_UnLoad: tell the opener, drop navigator links.
    virtual void formClosing() { }
    // Releases the form's own objects at their place in Form_UnLoad's order.
    virtual void release(Release) { }
    // Forms that borrow another form's log service report no missing one.
    virtual bool reportsMissingLogService() const { return true; }
    // A statement on the record frame's row (leaving, saving or closing it, reading it again),
    // through step(). A form that tells the user of a row someone else changed meanwhile and
    // reads it again runs it through writeRow() instead.
    virtual bool stepOnRow(const QString &procedure, const std::function<void()> &statement);

    // Each save or removal of the frame's row becomes one operation of the journal.
    void registraNelloStorico(fw::RecordFrame *frame, const QString &procedure);
    // Creates the main record frame on the form's connection (replacing any previous one).
    // Throws db::DatabaseError.
    fw::RecordFrame *openRecordFrame(const QString &sql, const QString &keyField = {});
    void setLogService(std::shared_ptr<fw::LogService> log);
    void setConnection(db::ConnectionPtr connection);

    void showEvent(QShowEvent *event) override;
    void changeEvent(QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    fw::ScriptObjectModel *scriptObjectModel() const;
    void takeHostConnection();
    void stopListeningToControls();

    fw::ContractPointer<fw::Cinterface> m_activeDll;
    fw::ContractPointer<fw::Cinterface> m_entryClass;
    std::shared_ptr<fw::LogService> m_log;
    db::ConnectionPtr m_hostConnection;
    db::ConnectionPtr m_connection;
    std::shared_ptr<fw::WorkflowStateService> m_statiDelFlusso; // on m_connection
    QPointer<fw::RecordFrame> m_recordFrame;
    QPointer<QWidget> m_centreOn; // the window a modal form opens over, until it is placed
    int m_companyCode = 0;
    bool m_loaded = false;
    bool m_firstActivation = true;
    bool m_activating = false;
    bool m_unloaded = false;
};
