#include "host/axes_dialog.h"

#include "host/graph_document.h"
#include "support/errors.h"
#include "support/guard.h"
#include "ui_axes_dialog.h"

#include <QPushButton>

namespace lumoplot {

TAxesDialog::TAxesDialog(TGraphDocument& document, QWidget* parent)
    : QDialog(parent), m_document(document), m_ui(std::make_unique<Ui::AxesDialog>()) {
    m_ui->setupUi(this);
    connect(m_ui->buttons, &QDialogButtonBox::accepted, this, [this] {
        if (Apply()) accept();
    });
    connect(m_ui->buttons->button(QDialogButtonBox::Apply), &QPushButton::clicked, this, [this] {
        if (Apply()) Fill();
    });
    Fill();
}

TAxesDialog::~TAxesDialog() = default;

void TAxesDialog::Fill() {
    TxyGraph& graph = m_document.Graph();
    graph.PrepareForDrawing();
    m_ui->e_GraphTitle->setText(QString::fromStdString(graph.Appearance()->GraphTitle()));
    m_ui->axisX->Fill(*graph.XAxis());
    m_ui->axisY->Fill(*graph.YAxis());
    m_ui->axisSecondY->Fill(*graph.YAxis_Second());
}

bool TAxesDialog::Check() {
    for (TAxisForm* form : {m_ui->axisX, m_ui->axisY, m_ui->axisSecondY}) {
        const bool right = Guarded([this, form] {
            try {
                form->Check();
            } catch (const ELumoError&) {
                m_ui->tabs->setCurrentWidget(form);
                throw;
            }
        });
        if (!right) return false;
    }
    return true;
}

bool TAxesDialog::Apply() {
    if (!Check()) return false;
    return Guarded([this] {
        m_document.Session().Change("axes and title", [this] {
            TxyGraph& graph = m_document.Graph();
            graph.Appearance()->SetGraphTitle(m_ui->e_GraphTitle->text().toStdString());
            m_ui->axisX->Store(*graph.XAxis());
            m_ui->axisY->Store(*graph.YAxis());
            m_ui->axisSecondY->Store(*graph.YAxis_Second());
            graph.NeedRescale();
        });
    });
}

} // namespace lumoplot
