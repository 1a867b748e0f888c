#include "Typloom/TyploomApp/TLLayersPalette.h"

#include "Platform/Qt/Conversions.h"
#include "Typloom/TyploomApp/TLCoordinateForm.h"
#include "Typloom/TyploomApp/TLLayerActions.h"
#include "Typloom/TyploomApp/TLLayerList.h"

#include <QAction>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPointer>
#include <QToolButton>
#include <QVBoxLayout>

namespace {

class PaletteWidget final : public QWidget {
public:
    std::function<void()> didAppear;
    std::function<void()> didCancel;

    QSize sizeHint() const override { return { 240, 400 }; }

protected:
    void showEvent(QShowEvent* event) override
    {
        QWidget::showEvent(event);
        if (didAppear) {
            didAppear();
        }
    }
    void keyPressEvent(QKeyEvent* event) override
    {
        if (event->key() == Qt::Key_Escape && didCancel) {
            didCancel();
        } else {
            QWidget::keyPressEvent(event);
        }
    }
};

QToolButton* makeButton(QAction* action, QString const& text, QString const& name)
{
    auto* const button = new QToolButton;
    button->setDefaultAction(action);
    QObject::connect(action, &QAction::changed, button, [button, text] { button->setText(text); });
    button->setText(text);
    button->setAccessibleName(name);
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::TabFocus);
    button->setMinimumSize(28, 26);
    auto font = button->font();
    font.setPointSizeF(font.pointSizeF() * 1.3);
    button->setFont(font);
    return button;
}

} // namespace

struct TLLayersPalette::Impl {
    std::shared_ptr<TLEditState> state;
    QPointer<PaletteWidget> widget { new PaletteWidget };
    TLLayerListModel* model { new TLLayerListModel(widget) };
    TLLayerListView* list { new TLLayerListView(model) };
    TLCoordinateForm* form { new TLCoordinateForm };
    QAction* showAction { new QAction("&Layers", widget) };
    bool isUpdating { false };

    explicit Impl(std::shared_ptr<TLEditState> editState)
        : state(std::move(editState))
    {
    }
    ~Impl()
    {
        if (widget) {
            widget->didAppear = nullptr;
            delete widget;
        }
    }

    void layOut(TLLayerActions const& actions)
    {
        auto* const title = new QLabel("Layers");
        auto font = title->font();
        font.setWeight(QFont::DemiBold);
        title->setFont(font);
        title->setContentsMargins(12, 10, 12, 6);
        auto* const buttons = new QHBoxLayout;
        buttons->setContentsMargins(8, 4, 8, 4);
        buttons->setSpacing(2);
        buttons->addWidget(makeButton(actions.addAction(), "+", "Add layer here"));
        buttons->addWidget(makeButton(actions.deleteAction(), "−", "Delete Layer"));
        buttons->addStretch(1);
        auto* const layout = new QVBoxLayout(widget);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->setSpacing(0);
        layout->addWidget(title);
        layout->addWidget(list, 1);
        layout->addWidget(form);
        layout->addLayout(buttons);
        list->setMinimumWidth(160);
    }

    void connect()
    {
        QObject::connect(list->selectionModel(), &QItemSelectionModel::currentChanged, widget,
            [this](QModelIndex const& current) {
                if (!isUpdating) {
                    goTo(current);
                }
            });
        widget->didAppear = [this] { update(); };
        showAction->setObjectName("showLayers");
        showAction->setCheckable(true);
        showAction->setChecked(true);
        showAction->setShortcut(QKeySequence("Ctrl+L"));
        QObject::connect(showAction, &QAction::toggled, widget, &QWidget::setVisible);
    }

    void goTo(QModelIndex const& index)
    {
        auto const layer = model->layerAt(index);
        if (!layer) {
            return;
        }
        auto const master
            = layer->isMasterLayer() ? state->font()->fontMasterForId(layer->layerId()) : nullptr;
        if (master) {
            return state->setMasterIndex(state->font()->indexOfObjectInAllMasters(master));
        }
        auto const range = state->line().selectedRange();
        state->switchToLayer(layer->layerId(), { range.location, std::max<std::size_t>(range.length, 1) });
    }

    void update()
    {
        if (!widget->isVisible() || isUpdating) {
            return;
        }
        isUpdating = true;
        auto const shown = state->showsInterpolation() ? nullptr : state->activeLayer();
        form->show(state->editedGlyph(), shown && shown->isBraceLayer() ? shown : nullptr, state->place());
        list->textWithoutLayers = state->editedGlyph() ? "No layers" : "No glyph is edited";
        model->show(state->editedGlyph(), shown ? shown->layerId() : std::string());
        auto const current = shown ? model->indexOfLayer(shown->layerId()) : QModelIndex();
        if (current != list->currentIndex()) {
            list->setCurrentIndex(current);
            list->scrollTo(current);
        }
        list->viewport()->update();
        isUpdating = false;
    }
};

TLLayersPalette::TLLayersPalette(std::shared_ptr<TLEditState> state, TLLayerActions const& actions)
    : m_impl(std::make_unique<Impl>(std::move(state)))
{
    m_impl->layOut(actions);
    m_impl->connect();
}

TLLayersPalette::~TLLayersPalette() = default;

QWidget* TLLayersPalette::widget() const
{
    return m_impl->widget;
}

QAction* TLLayersPalette::showAction() const
{
    return m_impl->showAction;
}

void TLLayersPalette::update()
{
    m_impl->update();
}

void TLLayersPalette::setCancelHandler(std::function<void()> handler)
{
    m_impl->form->didCancel = handler;
    m_impl->widget->didCancel = std::move(handler);
}
