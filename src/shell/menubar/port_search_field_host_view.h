// The row of the status menu that holds the port search field. It is as wide as the menu, and
// wherever the row is clicked, the field is meant.
#pragma once

#include <QLineEdit>
#include <QWidget>

namespace zenlot {

class PortSearchFieldHostView final : public QWidget {
    Q_OBJECT

  public:
    // Takes the field over.
    explicit PortSearchFieldHostView(QLineEdit* searchField);

    QLineEdit* searchField() const { return searchField_; }

    // The field for every point of the row, nothing for points outside.
    QWidget* hitTest(QPoint point) const;

    QSize sizeHint() const override;

  protected:
    void mouseDoubleClickEvent(QMouseEvent* event) override { forward(event); }
    void mouseMoveEvent(QMouseEvent* event) override { forward(event); }
    void mousePressEvent(QMouseEvent* event) override { forward(event); }
    void mouseReleaseEvent(QMouseEvent* event) override { forward(event); }
    void resizeEvent(QResizeEvent* event) override;

  private:
    int fieldHeight() const;
    void forward(QMouseEvent* event) const;

    QLineEdit* searchField_;
};

} // namespace zenlot
