// Edits a graph of a class of its own in the editor, which a timer answers with OK, draws it into a picture,
// and ends while the editor is shown, without deleting it.
#include <lumoplot/drawing.h>
#include <lumoplot/editxydata.h>
#include <lumoplot/graph.h>
#include <lumoplot/graph_edit_bar.h>
#include <lumoplot/message_box_sink.h>

#include <QApplication>
#include <QDialog>
#include <QImage>
#include <QPainter>
#include <QTimer>

class TOwnGraph : public lumoplot::TxyGraph {
protected:
    void paintEvent(QPaintEvent* event) override { TxyGraph::paintEvent(event); }
};

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    const lumoplot::TMessageBoxScope messages;
    TOwnGraph graph;
    lumoplot::TGraphEditBar bar(graph);
    delete new lumoplot::TGraphEditBar(graph);
    lumoplot::TSeries* series = graph.FindSeries(graph.AddSeries());
    for (int i = 0; i < 100; ++i) series->AddPoint(i, i * i);
    QTimer::singleShot(200, [] { static_cast<QDialog*>(QApplication::activeModalWidget())->done(1); });
    lumoplot::TShortString name = lumoplot::ToShortString("plot.ltp");
    const bool written = editxyData(graph, name, 255, {}, false, 0);
    deleteDataEditor();
    QImage picture(400, 300, QImage::Format_RGB32);
    graph.PrepareForDrawing();
    QPainter painter(&picture);
    lumoplot::DrawGraph(painter, graph, picture.rect());
    QTimer::singleShot(200, [] { QCoreApplication::exit(0); });
    editxyData(graph, name, 255, {}, false, 0);
    const bool hidden = !QApplication::activeModalWidget();
    return written && hidden && graph.FindSeries(1)->Count() == 100 && picture.pixelColor(200, 150).isValid()
               ? 0
               : 1;
}
