#include "shell/style/symbol_icon.h"

#include "shell/style/symbol_image.h"

#include <QQuickWindow>
#include <QSGImageNode>

#include <cmath>

namespace zenlot {

SymbolIcon::SymbolIcon(QQuickItem* parent) : QQuickItem(parent) {
    setFlag(ItemHasContents);
    setImplicitSize(size_, size_);
}

void SymbolIcon::setName(const QString& name) {
    if (name == name_)
        return;
    name_ = name;
    polish();
    Q_EMIT nameChanged();
}

void SymbolIcon::setSize(double size) {
    if (size == size_)
        return;
    size_ = size;
    setImplicitSize(size, size);
    polish();
    Q_EMIT sizeChanged();
}

void SymbolIcon::setColor(const QColor& color) {
    if (color == color_)
        return;
    color_ = color;
    polish();
    Q_EMIT colorChanged();
}

double SymbolIcon::devicePixelRatio() const {
    return window() == nullptr ? 1 : window()->effectiveDevicePixelRatio();
}

void SymbolIcon::componentComplete() {
    QQuickItem::componentComplete();
    polish();
}

void SymbolIcon::itemChange(ItemChange change, const ItemChangeData& data) {
    if (change == ItemSceneChange || change == ItemDevicePixelRatioHasChanged)
        polish();
    QQuickItem::itemChange(change, data);
}

void SymbolIcon::updatePolish() {
    image_ = symbolImage(name_, static_cast<int>(std::lround(size_ * devicePixelRatio())), color_);
    update();
}

QSGNode* SymbolIcon::updatePaintNode(QSGNode* node, UpdatePaintNodeData* /*data*/) {
    auto* imageNode = static_cast<QSGImageNode*>(node);
    if (image_.isNull()) {
        delete imageNode;
        return nullptr;
    }
    if (imageNode == nullptr) {
        imageNode = window()->createImageNode();
        imageNode->setOwnsTexture(true);
        imageNode->setFiltering(QSGTexture::Linear);
    }
    imageNode->setTexture(window()->createTextureFromImage(image_));
    // One pixel of the picture is one of the device, in the middle of whatever room there is.
    const double side = image_.width() / devicePixelRatio();
    const QPointF corner(std::round((width() - side) / 2), std::round((height() - side) / 2));
    imageNode->setRect(QRectF(corner, QSizeF(side, side)));
    return imageNode;
}

} // namespace zenlot
