// Following files and lines from the main window.
#include "data/series/ds_info.h"
#include "dialogs/link/link_dialog.h"
#include "host/main_window.h"
#include "session/live_links.h"
#include "sources/link/link_place.h"
#include "ui_main_window.h"

#include <QLabel>

namespace lumoplot {
namespace {

TSeries& AddFollowed(TxyGraph& graph, const TDSInfo& source) {
    TSeries& series = *graph.FindSeries(graph.AddSeries());
    const std::string name = LinkName(ParseLink(source.SourceName()));
    series.SetSeriesName(name);
    series.SetDuplicatesAllowed(true);
    series.DataSourceInfo() = source;
    series.SetLinesShown(true);
    series.SetPointsShown(false);
    TAppearance& appearance = *graph.Appearance();
    if (appearance.GraphTitle().empty()) appearance.SetGraphTitle(name);
    appearance.SetCurrSerIndex(series.SeriesIndex());
    if (graph.Series().size() == 2) graph.Legend()->Setvisible(true);
    return series;
}

} // namespace

std::vector<std::string> LinksOf(const TxyGraph& graph) {
    std::vector<std::string> links;
    for (const TSeries* series : graph.Series())
        if (series->DataSourceInfo().Kind() == TSourceKind::Link)
            links.push_back(series->DataSourceInfo().SourceName());
    return links;
}

void TMainWindow::FollowNew(const std::vector<std::string>& before) {
    m_links->Renew();
    for (TSeries* series : Graph().Series()) {
        const TDSInfo& source = series->DataSourceInfo();
        const bool isNew = std::ranges::find(before, source.SourceName()) == before.end();
        if (source.Kind() == TSourceKind::Link && isNew) m_links->Start(*series);
    }
}

void TMainWindow::AddLinks() {
    m_links = std::make_unique<TLiveLinks>(m_document->Session());
    connect(m_links.get(), &TLiveLinks::StatusChanged, this, &TMainWindow::ShowLinks);
    connect(m_document.get(), &TGraphDocument::StateChanged, m_links.get(), &TLiveLinks::Renew);
    connect(m_links.get(), &TLiveLinks::Fed, this, [this] { m_rows->setText(m_dataFiles->Summary()); });
    ShowLinks();
}

void TMainWindow::ShowLinks() {
    m_ui->a_PauseLinks->setEnabled(m_links->IsFollowing());
    m_ui->a_PauseLinks->setChecked(m_links->IsPaused());
    m_ui->a_StopLinks->setEnabled(m_links->IsFollowing());
    ShowNoticeSoon();
}

/// The current data set goes on when it has stopped following the same.
void TMainWindow::Follow(const TDSInfo& source) {
    const TSeries* current = Graph().FindSeries(Graph().Appearance()->CurrSerIndex());
    const bool goesOn = current && current->DataSourceInfo().Kind() == TSourceKind::Link &&
                        current->DataSourceInfo().FeedId() == 0 &&
                        current->DataSourceInfo().SourceName() == source.SourceName();
    const QString name = QString::fromStdString(LinkName(ParseLink(source.SourceName())));
    Change(tr("follow %1").arg(name), [&] {
        TSeries& series = goesOn ? *Graph().FindSeries(current->SeriesIndex()) : AddFollowed(Graph(), source);
        series.DataSourceInfo() = source;
        m_links->Start(series);
    });
}

void TMainWindow::OnFollow() {
    const TSeries* current = Graph().FindSeries(Graph().Appearance()->CurrSerIndex());
    TLinkDialog dialog(current ? current->DataSourceInfo() : TDSInfo(), this);
    if (dialog.exec() == QDialog::Accepted) Follow(dialog.Source());
}

void TMainWindow::FollowText(const std::string& link) {
    TDSInfo source;
    source.SetKind(TSourceKind::Link);
    source.SetSourceName(link);
    Follow(source);
}

void TMainWindow::OnPauseLinks() {
    m_links->SetPaused(m_ui->a_PauseLinks->isChecked());
}

void TMainWindow::OnStopLinks() {
    m_links->Stop();
}

} // namespace lumoplot
