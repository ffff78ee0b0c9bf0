// The record of a curve fit in the stream. Values go straight into the fields: a file's settings are taken as
// they are where a setter would accept them, and nothing is announced until the whole record has been read.
#include "fit/cur_fit.h"

#include <cctype>
#include <set>

namespace lumoplot {
namespace {

std::string LowerCased(std::string text) {
    for (char& c : text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return text;
}

} // namespace

void TCurFit::WriteDefinition(TxyWriter& writer) const {
    writer.WriteIntegerItem(m_status);
    writer.WriteStringItem(m_xVarName);
    writer.WriteStringItem(m_expression);
    writer.WriteIntegerItem(m_nPoints);
    writer.WriteBooleanItem(m_showCurve);
    writer.WriteIntegerItem(m_curveColor);
    writer.WriteIntegerItem(m_curveStyle);
    writer.WriteIntegerItem(m_curveWidth);
    writer.WriteIntegerItem(NParams());
    for (const auto& parameter : m_parameters) {
        writer.WriteStringItem(parameter->m_name);
        writer.WriteFloatItem(parameter->m_value);
        writer.WriteFloatItem(parameter->StartDeviation);
        writer.WriteFloatItem(parameter->FinalDeviation);
        writer.WriteBooleanItem(parameter->m_vary);
        writer.WriteBooleanItem(parameter->ShowInLegend);
        writer.WriteStringItem(parameter->Description);
        writer.WriteStringItem(parameter->Units);
    }
}

void TCurFit::ReadDefinition(TxyReader& reader) {
    m_status = reader.ReadIntegerItem();
    m_xVarName = reader.ReadStringItem();
    m_expression = reader.ReadStringItem();
    m_nPoints = reader.ReadIntegerItem();
    m_showCurve = reader.ReadBooleanItem();
    m_curveColor = reader.ReadIntegerItem();
    m_curveStyle = reader.ReadIntegerItem();
    m_curveWidth = reader.ReadIntegerItem();
    m_parameters.clear();
    std::set<std::string> names;
    for (int left = reader.ReadIntegerItem(); left > 0; --left) {
        auto parameter = std::make_unique<TDBLParameter>();
        parameter->m_name = reader.ReadStringItem();
        parameter->m_value = reader.ReadFloatItem();
        parameter->StartDeviation = reader.ReadFloatItem();
        parameter->FinalDeviation = reader.ReadFloatItem();
        parameter->m_vary = reader.ReadBooleanItem();
        parameter->ShowInLegend = reader.ReadBooleanItem();
        parameter->Description = reader.ReadStringItem();
        parameter->Units = reader.ReadStringItem();
        parameter->m_owner = this;
        if (names.insert(LowerCased(parameter->m_name)).second) m_parameters.push_back(std::move(parameter));
    }
}

void TCurFit::WriteSettings(TxyWriter& writer) const {
    writer.WriteFloatItem(m_tolerance);
    writer.WriteBooleanItem(m_useLeftMargin);
    writer.WriteBooleanItem(m_useRightMargin);
    writer.WriteFloatItem(m_leftMargin);
    writer.WriteFloatItem(m_rightMargin);
    writer.WriteIntegerItem(m_iterMax);
    writer.WriteIntegerItem(m_procType);
}

void TCurFit::ReadSettings(TxyReader& reader) {
    if (const double tolerance = reader.ReadFloatItem(); tolerance > 0) m_tolerance = tolerance;
    m_useLeftMargin = reader.ReadBooleanItem();
    m_useRightMargin = reader.ReadBooleanItem();
    m_leftMargin = reader.ReadFloatItem();
    m_rightMargin = reader.ReadFloatItem();
    if (const int iterMax = reader.ReadIntegerItem(); iterMax > 0) m_iterMax = iterMax;
    m_procType = reader.ReadIntegerItem();
}

void TCurFit::WriteTemplates(TxyWriter& writer) const {
    writer.WriteIntegerItem(NTemplates());
    for (const auto& function : m_templates) {
        writer.WriteStringItem(function->Name);
        writer.WriteStringItem(function->Text);
        if (writer.Encoding() == TEncoding::Compact) writer.WriteStringItem(function->Description);
    }
}

void TCurFit::ReadTemplates(TxyReader& reader) {
    const bool described = reader.KeyLetter() == 'C';
    m_templates.clear();
    for (int left = reader.ReadIntegerItem(); left > 0; --left) {
        auto function = std::make_unique<TDBLFunction>();
        function->Name = reader.ReadStringItem();
        function->Text = reader.ReadStringItem();
        if (described) function->Description = reader.ReadStringItem();
        m_templates.push_back(std::move(function));
    }
}

std::span<const TSectionRow<TCurFit>> CurFitRows() {
    static constexpr TSectionRow<TCurFit> kRows[] = {
        CompositeRow<TCurFit, &TCurFit::WriteDefinition, &TCurFit::ReadDefinition>(39, "CurFit"),
        CompositeRow<TCurFit, &TCurFit::WriteSettings, &TCurFit::ReadSettings>(43, "CurveFit"),
        CompositeRow<TCurFit, &TCurFit::WriteTemplates, &TCurFit::ReadTemplates>(45, "CurveFit"),
    };
    return kRows;
}

void TCurFit::SaveToStream(TxyWriter& writer) const {
    for (const auto& row : CurFitRows()) row.write(writer, row, *this);
    writer.WriteEndOfSection("End");
}

void TCurFit::LoadFromStream(TxyReader& reader) {
    m_parameters.clear();
    m_templates.clear();
    ReadEntries(reader, CurFitRows(), *this);
    Changed(false);
    m_stale = true;
}

void TCurFit::Assign(const TCurFit* other) {
    if (!other || other == this) return;
    TBytes bytes;
    TxyWriter writer(bytes, TEncoding::Compact);
    other->SaveToStream(writer);
    TByteSource source(bytes);
    TxyReader reader(source);
    LoadFromStream(reader);
}

} // namespace lumoplot
