#include "RootViewController.h"

#include "Diagnostics.h"
#include "UIActivityViewController.h"

#include <QWindow>

#include <utility>

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
    else if (m_presented->state() == UIActivityViewController::Finished && !m_next)
        m_next = std::move(controller);
    else
        controller->close();
}

void RootViewController::dismiss()
{
    setPresented(nullptr);
    if (m_next)
        setPresented(std::move(m_next));
}

void RootViewController::setPresented(std::unique_ptr<UIActivityViewController> controller)
{
    std::unique_ptr<UIActivityViewController> previous = std::move(m_presented);
    m_presented = std::move(controller);
    if (m_presented)
        m_presented->open();
    Q_EMIT presentedChanged();
    // It may be its own signal that ends here.
    if (previous)
        previous.release()->deleteLater();
}
