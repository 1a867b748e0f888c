#pragma once

#include <QLineEdit>

#include <functional>
#include <limits>
#include <optional>

/// A field for one number, in the user's language. What is typed counts when Return is pressed or the
/// field is left; text that is no number gives back what was there, and so does Escape. Arrow keys
/// step, with Shift by ten times as much.
class TLNumberField final : public QLineEdit {
public:
    explicit TLNumberField(QWidget* parent = nullptr);
    ~TLNumberField() override;

    /// What the field shows, none for an empty one. What the user is typing stays, and counts
    /// against the new value.
    void setValue(std::optional<double> value);
    std::optional<double> value() const { return m_value; }
    /// Whether an empty text stands for no value.
    void setAllowsNone(bool allows) { m_allowsNone = allows; }
    /// Where arrow keys stop.
    void setRange(double minimum, double maximum);
    /// Takes what was typed, as leaving the field does. Does nothing where nothing was.
    void commit();
    /// Gives back what was there before typing.
    void revert();

    std::function<void(std::optional<double>)> didChange; ///< By the user's hand.
    std::function<void()> didCancel; ///< Escape, with nothing typed.

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    struct Typed {
        bool isValue { false };
        std::optional<double> value {};
    };
    Typed typed() const;
    void step(double direction, bool big);
    void take(std::optional<double> value);
    void showValue();

    std::optional<double> m_value;
    bool m_allowsNone { false };
    double m_minimum { -std::numeric_limits<double>::infinity() };
    double m_maximum { std::numeric_limits<double>::infinity() };
};
