#include "journeys/CReader.h"

#include <QDBusArgument>
#include <QDBusInterface>
#include <QDBusMessage>
#include <QDBusReply>
#include <QDBusVariant>

static const QString ACCESSIBLE = "org.a11y.atspi.Accessible";
static const QString ACTION = "org.a11y.atspi.Action";
static const QString VALUE = "org.a11y.atspi.Value";
static const QString ROOT = "/org/a11y/atspi/accessible/root";
static const int PATIENCE_MS = 10000;

// The bits of a state set, in the order in which the bus numbers them.
static const QStringList STATES
    = QString("invalid active armed busy checked collapsed defunct editable enabled expandable "
              "expanded focusable focused has-tooltip horizontal iconified modal multi-line "
              "multiselectable opaque pressed resizable selectable selected sensitive showing "
              "single-line stale transient vertical visible manages-descendants indeterminate required "
              "truncated animated invalid-entry supports-autocompletion selectable-text is-default "
              "visited checkable has-popup read-only")
          .split(' ');

static QDBusConnection Connect()
{
    QDBusMessage ask
        = QDBusMessage::createMethodCall("org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress");
    const QDBusReply<QString> address = QDBusConnection::sessionBus().call(ask, QDBus::Block, PATIENCE_MS);
    return QDBusConnection::connectToBus(address.value(), "reader");
}

CReader::CReader()
    : m_bus(Connect())
{
}

bool CReader::IsConnected() const { return m_bus.isConnected(); }

static QVariantList Call(const QDBusConnection& bus, const STHeard& stHeard, const QString& strInterface,
                         const QString& strMethod, const QVariantList& listArgument = {})
{
    QDBusMessage ask
        = QDBusMessage::createMethodCall(stHeard.strService, stHeard.strPath, strInterface, strMethod);
    ask.setArguments(listArgument);
    return bus.call(ask, QDBus::Block, PATIENCE_MS).arguments();
}

static QVariant Property(const QDBusConnection& bus, const STHeard& stHeard, const QString& strInterface,
                         const QString& strProperty)
{
    const QVariantList listAnswer
        = Call(bus, stHeard, "org.freedesktop.DBus.Properties", "Get", {strInterface, strProperty});
    return listAnswer.value(0).value<QDBusVariant>().variant();
}

QString CReader::Name(const STHeard& stHeard) const
{
    return Property(m_bus, stHeard, ACCESSIBLE, "Name").toString();
}

QString CReader::Description(const STHeard& stHeard) const
{
    return Property(m_bus, stHeard, ACCESSIBLE, "Description").toString();
}

QString CReader::Role(const STHeard& stHeard) const
{
    return Call(m_bus, stHeard, ACCESSIBLE, "GetRoleName").value(0).toString();
}

QList<STHeard> CReader::Children(const STHeard& stHeard) const
{
    QList<STHeard> listChild;
    const QVariant answer = Call(m_bus, stHeard, ACCESSIBLE, "GetChildren").value(0);
    if (!answer.canConvert<QDBusArgument>()) {
        return listChild;
    }
    const auto argument = answer.value<QDBusArgument>();
    argument.beginArray();
    while (!argument.atEnd()) {
        QString strService;
        QDBusObjectPath path;
        argument.beginStructure();
        argument >> strService >> path;
        argument.endStructure();
        listChild.append({strService, path.path()});
    }
    argument.endArray();
    return listChild;
}

QStringList CReader::States(const STHeard& stHeard) const
{
    QStringList listState;
    const QVariant answer = Call(m_bus, stHeard, ACCESSIBLE, "GetState").value(0);
    QList<uint> listWord;
    if (answer.canConvert<QDBusArgument>()) {
        answer.value<QDBusArgument>() >> listWord;
    }
    const quint64 nBits = listWord.value(0) | quint64(listWord.value(1)) << 32;
    for (int n = 0; n < STATES.size(); ++n) {
        if (nBits >> n & 1) {
            listState.append(STATES[n]);
        }
    }
    return listState;
}

bool CReader::Is(const STHeard& stHeard, const QString& strState) const
{
    return States(stHeard).contains(strState);
}

QStringList CReader::Actions(const STHeard& stHeard) const
{
    QStringList listName;
    const int nActions = Property(m_bus, stHeard, ACTION, "NActions").toInt();
    for (int n = 0; n < nActions; ++n) {
        listName.append(Call(m_bus, stHeard, ACTION, "GetName", {n}).value(0).toString());
    }
    return listName;
}

bool CReader::Do(const STHeard& stHeard, const QString& strAction) const
{
    const int nAction = Actions(stHeard).indexOf(strAction);
    return nAction >= 0 && Call(m_bus, stHeard, ACTION, "DoAction", {nAction}).value(0).toBool();
}

double CReader::Value(const STHeard& stHeard) const
{
    const QVariant value = Property(m_bus, stHeard, VALUE, "CurrentValue");
    return value.isValid() ? value.toDouble() : -1;
}

STHeard CReader::Program(const QString& strName) const
{
    const QList<STHeard> listProgram = Children({"org.a11y.atspi.Registry", ROOT});
    for (const STHeard& stProgram : listProgram) {
        if (Name(stProgram) == strName) {
            return stProgram;
        }
    }
    return {};
}

void CReader::Collect(const STHeard& stTop, int nDepth, QList<STHeard>* pListHeard, QString* pOutline) const
{
    const QStringList listState = States(stTop);
    // The top of a program is on no screen.
    if (nDepth > 0 && !listState.contains("showing")) {
        return;
    }
    pListHeard->append(stTop);
    if (pOutline) {
        *pOutline += QString("%1%2 \"%3\" (%4) [%5]\n")
                         .arg(QString(2 * nDepth, ' '), Role(stTop), Name(stTop), Description(stTop),
                              listState.join(' '));
    }
    const QList<STHeard> listChild = Children(stTop);
    for (const STHeard& stChild : listChild) {
        Collect(stChild, nDepth + 1, pListHeard, pOutline);
    }
}

QList<STHeard> CReader::Showing(const STHeard& stTop) const
{
    QList<STHeard> listHeard;
    Collect(stTop, 0, &listHeard, nullptr);
    return listHeard;
}

QString CReader::Outline(const STHeard& stTop) const
{
    QList<STHeard> listHeard;
    QString strOutline;
    Collect(stTop, 0, &listHeard, &strOutline);
    return strOutline;
}

STHeard CReader::Find(const STHeard& stTop, const QString& strRole, const QString& strName) const
{
    const QList<STHeard> listHeard = Showing(stTop);
    for (const STHeard& stHeard : listHeard) {
        if (Name(stHeard) == strName && Role(stHeard) == strRole) {
            return stHeard;
        }
    }
    return {};
}

STHeard CReader::Focus(const STHeard& stTop) const
{
    STHeard stFocus;
    const QList<STHeard> listHeard = Showing(stTop);
    for (const STHeard& stHeard : listHeard) {
        if (Is(stHeard, "focused")) {
            stFocus = stHeard;
        }
    }
    return stFocus;
}
