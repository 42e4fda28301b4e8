#pragma once

#include <QProxyStyle>

class QStyleOptionSlider;

/// The look of the window where the desktop brings none of its own: Fusion with slim scroll bars,
/// flat headers, room around texts, a soft selection in the source list, and a ring around what has
/// the keyboard. All colours are the palette's.
class Style final : public QProxyStyle
{
    Q_OBJECT
public:
    /// Over Fusion.
    Style();

    /// Makes it the application's style, unless the desktop has one.
    static void install();

    /// A selected icon is drawn in the colour of selected text, as its own may vanish there.
    QPixmap generatedIconPixmap(QIcon::Mode mode, const QPixmap& pixmap,
                                const QStyleOption* option) const override;
    int pixelMetric(PixelMetric metric, const QStyleOption* option,
                    const QWidget* widget) const override;
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* result) const override;
    QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                         const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                            QPainter* painter, const QWidget* widget) const override;
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;

private:
    void drawScrollBar(const QStyleOptionSlider& bar, QPainter& painter,
                       const QWidget* widget) const;
};
