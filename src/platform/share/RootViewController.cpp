#include "RootViewController.h"

#include "Diagnostics.h"
#include "UIActivityViewController.h"

#include <QWindow>

#include <utility>

namespace {

bool isFinished(const UIActivityViewController& controller)
{
    return controller.state() == UIActivityViewController::Finished;
}

/// It may be its own signal or completion that ends here.
void deleteSoon(std::unique_ptr<UIActivityViewController> controller)
{
    if (controller)
        controller.release()->deleteLater();
}

} // namespace

RootViewController::RootViewController(QWindow* window)
    : QObject(window)
{
}

RootViewController::~RootViewController() = default;

RootViewController& RootViewController::of(const QWindow& window)
{
    auto* const root = window.findChild<RootViewController*>({}, Qt::FindDirectChildrenOnly);
    if (!root)
        fatalError("Unexpectedly found nil while unwrapping an Optional value");
    return *root;
}

void RootViewController::present(std::unique_ptr<UIActivityViewController> controller)
{
    if (!m_presented)
        setPresented(std::move(controller));
    else if (isFinished(*m_presented) && (!m_next || isFinished(*m_next)))
        setNext(std::move(controller));
    else
        controller->close();
}

void RootViewController::dismiss()
{
    setPresented(nullptr);
    if (!m_next)
        return;
    if (isFinished(*m_next))
        setNext(nullptr);
    else
        setPresented(std::move(m_next));
}

void RootViewController::setNext(std::unique_ptr<UIActivityViewController> controller)
{
    m_next.swap(controller);
    deleteSoon(std::move(controller));
}

void RootViewController::setPresented(std::unique_ptr<UIActivityViewController> controller)
{
    std::unique_ptr<UIActivityViewController> previous = std::move(m_presented);
    m_presented = std::move(controller);
    if (m_presented)
        m_presented->open();
    Q_EMIT presentedChanged();
    deleteSoon(std::move(previous));
}
