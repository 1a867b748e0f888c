#include "Typloom/TyploomApp/TLAddAxisDialog.h"

#include "Platform/Qt/Conversions.h"
#include "Typloom/TyploomApp/TLNumberText.h"
#include "Typloom/TyploomCore/TLFontCommands.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include <array>
#include <limits>

namespace {

struct NewAxis {
    std::string name;
    std::string tag;
    TLAxisBounds bounds;
};

/// The first of the usual axes that the font has not; an own one where it has them all.
NewAxis suggestion(TLFont const& font)
{
    std::array const usual {
        NewAxis { "Weight", "wght", { 100, 400, 900 } },
        NewAxis { "Width", "wdth", { 50, 100, 200 } },
        NewAxis { "Optical Size", "opsz", { 6, 12, 72 } },
        NewAxis { "Slant", "slnt", { -15, 0, 0 } },
    };
    auto const isFree = [&font](NewAxis const& axis) {
        return !TLReasonAgainstAxisName(font, axis.name) && !TLReasonAgainstAxisTag(font, axis.tag);
    };
    for (auto const& axis : usual) {
        if (isFree(axis)) {
            return axis;
        }
    }
    NewAxis own;
    for (int number = 1; number < 1000; ++number) {
        auto const digits = std::to_string(number);
        own = { "Axis " + digits, "A" + std::string(3 - digits.size(), '0') + digits, {} };
        if (isFree(own)) {
            break;
        }
    }
    return own;
}

class AddAxisDialog final : public QDialog {
public:
    AddAxisDialog(QWidget& parent, std::shared_ptr<TLFont> font)
        : QDialog(&parent)
        , m_font(std::move(font))
    {
        setAttribute(Qt::WA_DeleteOnClose);
        setWindowTitle("Add Axis");
        m_form->addRow("&Name", m_name);
        m_form->addRow("Ta&g", m_tag); // An underlined T would be drawn further from its a than was measured.
        m_form->addRow("M&inimum", m_minimum);
        m_form->addRow("&Default", m_default);
        m_form->addRow("M&aximum", m_maximum);
        m_tag->setMaxLength(4);
        m_reason->setAccessibleName("Refusal");
        m_reason->setTextFormat(Qt::PlainText);
        m_reason->setWordWrap(true);
        m_reason->setMinimumSize(300, 2 * m_reason->fontMetrics().lineSpacing());
        m_reason->setAlignment(Qt::AlignTop);
        m_form->addRow(m_reason);
        auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Cancel);
        m_add = buttons->addButton("Add Axis", QDialogButtonBox::AcceptRole);
        m_form->addRow(buttons);
        connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
        connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
        showSuggestion();
        for (auto* const field : { m_name, m_tag, m_minimum, m_default, m_maximum }) {
            connect(field, &QLineEdit::textChanged, this, [this] { validate(); });
        }
        validate();
    }

    void accept() override
    {
        auto const axis = typed();
        if (TLAddAxis(m_font, axis.name, axis.tag, axis.bounds)) {
            QDialog::accept();
        }
    }

private:
    void showSuggestion()
    {
        auto const axis = suggestion(*m_font);
        auto const text = [](double value) { return toQString(TLNumberText(value)); };
        m_name->setText(toQString(axis.name));
        m_tag->setText(toQString(axis.tag));
        m_minimum->setText(text(axis.bounds.minimum));
        m_default->setText(text(axis.bounds.defaultValue));
        m_maximum->setText(text(axis.bounds.maximum));
        m_name->selectAll();
    }

    NewAxis typed() const
    {
        auto const number = [](QLineEdit const* field) {
            return TLNumberFromText(fromQString(field->text()))
                .value_or(std::numeric_limits<double>::quiet_NaN());
        };
        return { fromQString(m_name->text().trimmed()), fromQString(m_tag->text()),
            { number(m_minimum), number(m_default), number(m_maximum) } };
    }

    void validate()
    {
        auto const axis = typed();
        auto reason = TLReasonAgainstAxisName(*m_font, axis.name);
        reason = reason ? reason : TLReasonAgainstAxisTag(*m_font, axis.tag);
        reason = reason ? reason : TLReasonAgainstAxisBounds(axis.bounds);
        m_reason->setText(toQString(reason.value_or("")));
        m_add->setEnabled(!reason);
    }

    std::shared_ptr<TLFont> m_font;
    QFormLayout* m_form { new QFormLayout(this) };
    QLineEdit* m_name { new QLineEdit };
    QLineEdit* m_tag { new QLineEdit };
    QLineEdit* m_minimum { new QLineEdit };
    QLineEdit* m_default { new QLineEdit };
    QLineEdit* m_maximum { new QLineEdit };
    QLabel* m_reason { new QLabel };
    QPushButton* m_add;
};

} // namespace

void TLOpenAddAxisDialog(QWidget& parent, std::shared_ptr<TLFont> const& font)
{
    (new AddAxisDialog(parent, font))->open();
}
