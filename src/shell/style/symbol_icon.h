// Shows one of the program's symbols in one colour, sharp at every device pixel ratio. An unknown
// name shows nothing. It is an ornament: it takes no keys and no clicks and is not told to
// assistive technology; what it means is the name of the control or the text that it belongs to.
//
//     SymbolIcon { name: "trash"; size: 14; color: Theme.secondaryLabel }
#pragma once

#include <QColor>
#include <QImage>
#include <QQuickItem>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace zenlot {

class SymbolIcon : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT

    Q_PROPERTY(QString name READ name WRITE setName NOTIFY nameChanged)
    // The side of the square that the symbol is drawn in, in device-independent pixels.
    Q_PROPERTY(double size READ size WRITE setSize NOTIFY sizeChanged)
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged)

  public:
    explicit SymbolIcon(QQuickItem* parent = nullptr);

    QString name() const { return name_; }
    void setName(const QString& name);

    double size() const { return size_; }
    void setSize(double size);

    QColor color() const { return color_; }
    void setColor(const QColor& color);

  Q_SIGNALS:
    void nameChanged();
    void sizeChanged();
    void colorChanged();

  protected:
    void componentComplete() override;
    void itemChange(ItemChange change, const ItemChangeData& data) override;
    void updatePolish() override;
    QSGNode* updatePaintNode(QSGNode* node, UpdatePaintNodeData* data) override;

  private:
    double devicePixelRatio() const;

    QString name_;
    double size_ = 16;
    QColor color_ = Qt::black;
    QImage image_;
};

} // namespace zenlot
