#include "PictureSource.h"

#include "support/RawHttpServer.h"

CPictureSource::CPictureSource(const QByteArray& picture) {
    m_agent.moveToThread(&m_thread);
    m_thread.start();
    QMetaObject::invokeMethod(
        &m_agent,
        [this, picture] {
            m_server = std::make_unique<CRawHttpServer>();
            m_server->SetHandler(
                [this, picture](const RawHttpRequest& request) { m_server->Answer(request.connection, 200, picture); });
            if (m_server->Listen()) {
                m_url = QString::fromStdString(m_server->Url());
            }
        },
        Qt::BlockingQueuedConnection);
}

CPictureSource::~CPictureSource() {
    QMetaObject::invokeMethod(
        &m_agent, [this] { m_server.reset(); }, Qt::BlockingQueuedConnection);
    m_thread.quit();
    m_thread.wait();
}
