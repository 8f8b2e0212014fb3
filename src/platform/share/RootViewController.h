#pragma once

#include <QObject>

#include <memory>

class QWindow;
class UIActivityViewController;

/// What presents share sheets in a window. The application makes one for each window that shall,
/// and its view shows the sheet that is presented.
class RootViewController : public QObject {
    Q_OBJECT

public:
    /// A child of the window, which must have no other.
    explicit RootViewController(QWindow* window);
    ~RootViewController() override;

    /// That of a window. One that has none stops the process.
    [[nodiscard]] static RootViewController& of(const QWindow& window);

    /// Opens a sheet over the window, at once, or as soon as one that the user has finished with is
    /// out of sight. While the user is busy with another one it is not shown, which its completion
    /// is told as if the user had closed it. One that is closed while it waits is not shown either.
    void present(std::unique_ptr<UIActivityViewController> controller);

    /// The sheet that is in sight; null for none.
    [[nodiscard]] UIActivityViewController* presented() const { return m_presented.get(); }

    /// The sheet is out of sight: lets go of it.
    void dismiss();

Q_SIGNALS:
    void presentedChanged();

private:
    void setPresented(std::unique_ptr<UIActivityViewController> controller);
    void setNext(std::unique_ptr<UIActivityViewController> controller);

    std::unique_ptr<UIActivityViewController> m_presented;
    std::unique_ptr<UIActivityViewController> m_next;
};
