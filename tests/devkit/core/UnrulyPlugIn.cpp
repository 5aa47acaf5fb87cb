#include "suite/NlFlyer.h"
#include "suite/OrbDpApi.h"
#include "tarn/IDataPeer.h"
#include "tarn/IPlugIn.h"
#include "tarn/IPlugInManager.h"
#include "tarn/VariableIdentifier.h"

#include <QDesktopServices>
#include <QObject>
#include <QUrl>

#include <limits>

/// A type that the host does not know.
struct UnrulyType
{
    QString text = QStringLiteral("own");
};
Q_DECLARE_METATYPE(UnrulyType)

/// A plug-in for tests of the host: it never hands its peer back, opens what it is told to, writes variables of odd
/// types and texts that lie in its library, and tells when the event loop is ready.
class UnrulyPlugIn : public QObject, public IPlugIn
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.example.UnrulyPlugIn")
    Q_INTERFACES(IPlugIn)

public:
    bool Initialize(IPlugInManager* manager) override
    {
        m_peer = manager->GetDataPeer();
        m_peer->RegisterKept("@Unruly:kept");
        m_peer->SetValue("@Unruly:kept", std::numeric_limits<qlonglong>::min(), 0);
        m_peer->SetValue("@Unruly:list", QStringList{QStringLiteral("a"), QStringLiteral("b")}, 0);
        const QString literal = QStringLiteral("literal");
        m_peer->SetValue(QStringLiteral("@Unruly:literals"),
                         QVariantMap{{literal, QVariantList{literal, QVariant::fromValue(VariableIdentifier(literal))}},
                                     {QStringLiteral("own"), QVariant::fromValue(UnrulyType())}},
                         0);
        m_peer->Subscribe("@Unruly:open", this, SLOT(OnOpen(VariableIdentifier)));
        m_peer->Subscribe("@Unruly:advertise", this, SLOT(OnAdvertise()));
        m_peer->Subscribe("@Unruly:later", this, SLOT(OnLater()));
        manager->InvokeWhenEventLoopReady(nullptr, this, SLOT(OnEventLoopReady()));
        return true;
    }

private Q_SLOTS:
    void OnOpen(VariableIdentifier id) { QDesktopServices::openUrl(QUrl(m_peer->GetValue(id).toString())); }

    /// Shows a flyer with a button that acts and one that closes it, and tells the metrics.
    void OnAdvertise()
    {
        NlFlyerHandle flyer = nullptr;
        const NlFlyerButton act{0, "@Unruly:later", 0};
        const NlFlyerButton close{0, nullptr, 0};
        NlFlyer_CreateFlyer(0, L"Title \u20ac", L"Text", 0, &flyer);
        NlFlyer_AddButton(flyer, L"Act", &act, 0);
        NlFlyer_AddButton(flyer, L"Close", &close, 0);
        NlFlyer_ShowFlyer(flyer, 0, 0);
        OrbDpApi_MetricsRecordMajorEvent(7, "advertised", L"payload \u20ac");
    }

    /// Answers in three turns of the event loop.
    void OnLater()
    {
        const auto answer = [this] { m_peer->Trigger("@Unruly:done", 0); };
        const auto second = [this, answer] { QMetaObject::invokeMethod(this, answer, Qt::QueuedConnection); };
        QMetaObject::invokeMethod(this, second, Qt::QueuedConnection);
    }

    void OnEventLoopReady() { m_peer->SetValue("@Unruly:ready", true, 0); }

private:
    IDataPeer* m_peer = nullptr;
};

#include "UnrulyPlugIn.moc"
