// The record of a curve fit in the stream. Values go straight into the fields: a file's settings are taken as
// they are where a setter would accept them, and nothing is announced until the whole record has been read.
#include "fit/definition/cur_fit.h"

#include "fit/definition/fit_result.h"
#include "support/errors.h"
#include "support/number_text.h"
#include "support/replace_file.h"

#include <optional>
#include <set>
#include <sstream>
#include <utility>

namespace lumoplot {

void TCurFit::WriteDefinition(TxyWriter& writer) const {
    writer.WriteIntegerItem(static_cast<int>(m_settings.Status));
    writer.WriteStringItem(m_settings.XVarName);
    writer.WriteStringItem(m_settings.Expression);
    writer.WriteIntegerItem(m_settings.NPoints);
    writer.WriteBooleanItem(m_settings.ShowCurve);
    writer.WriteIntegerItem(m_settings.CurveColor);
    writer.WriteIntegerItem(m_settings.CurveStyle);
    writer.WriteIntegerItem(m_settings.CurveWidth);
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
    ++m_revision;
    SetStale(true);
    m_settings.Status = TFitStatus{reader.ReadIntegerItem()};
    m_settings.XVarName = reader.ReadStringItem();
    m_settings.Expression = reader.ReadStringItem();
    m_settings.NPoints = reader.ReadIntegerItem();
    m_settings.ShowCurve = reader.ReadBooleanItem();
    m_settings.CurveColor = reader.ReadIntegerItem();
    m_settings.CurveStyle = reader.ReadIntegerItem();
    m_settings.CurveWidth = reader.ReadIntegerItem();
    Forget();
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
    writer.WriteFloatItem(m_settings.Tolerance);
    writer.WriteBooleanItem(m_settings.UseLeftMargin);
    writer.WriteBooleanItem(m_settings.UseRightMargin);
    writer.WriteFloatItem(m_settings.LeftMargin);
    writer.WriteFloatItem(m_settings.RightMargin);
    writer.WriteIntegerItem(m_settings.IterMax);
    writer.WriteIntegerItem(static_cast<int>(m_settings.ProcType));
}

void TCurFit::ReadSettings(TxyReader& reader) {
    ++m_revision;
    SetStale(true);
    m_settings.Weighting = {}; // has an entry of its own, behind this one
    if (const double tolerance = reader.ReadFloatItem(); tolerance > 0) m_settings.Tolerance = tolerance;
    m_settings.UseLeftMargin = reader.ReadBooleanItem();
    m_settings.UseRightMargin = reader.ReadBooleanItem();
    m_settings.LeftMargin = reader.ReadFloatItem();
    m_settings.RightMargin = reader.ReadFloatItem();
    if (const int iterMax = reader.ReadIntegerItem(); iterMax > 0) m_settings.IterMax = iterMax;
    m_settings.ProcType = TFitProcedure{reader.ReadIntegerItem()};
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
    ++m_revision;
    SetStale(true);
    for (int left = reader.ReadIntegerItem(); left > 0; --left) {
        auto function = std::make_unique<TDBLFunction>();
        function->Name = reader.ReadStringItem();
        function->Text = reader.ReadStringItem();
        if (described) function->Description = reader.ReadStringItem();
        m_templates.push_back(std::move(function));
    }
}

std::string TCurFit::BoundsText() const {
    std::string text;
    for (int i = 1; i <= NParams(); ++i) {
        const TDBLParameter& parameter = *Parameter(i);
        if (!parameter.IsBounded()) continue;
        text += (text.empty() ? "" : "\n") + std::to_string(i) + ' ' + FormatShortest(parameter.m_min) + ' ' +
                FormatShortest(parameter.m_max);
    }
    return text;
}

void TCurFit::SetBoundsText(const std::string& text) {
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        std::istringstream words(line);
        std::string number, min, max;
        words >> number >> min >> max;
        TDBLParameter* parameter = Parameter(TryParseInteger(number).value_or(0));
        const std::optional<double> low = TryParseFloat(min);
        const std::optional<double> high = TryParseFloat(max);
        if (!parameter || !low || !high || !(*low < *high)) continue;
        parameter->m_min = *low;
        parameter->m_max = *high;
    }
    ++m_revision;
    SetStale(true);
}

void TCurFit::SetWeightingText(const std::string& text) {
    m_settings.Weighting = FitWeightingOf(text);
    ++m_revision;
    SetStale(true);
}

std::string TCurFit::TiesText() const {
    std::string text;
    for (int i = 1; i <= NParams(); ++i)
        if (Parameter(i)->IsTied())
            text += (text.empty() ? "" : "\n") + std::to_string(i) + ' ' + Parameter(i)->Tie();
    return text;
}

void TCurFit::SetTiesText(const std::string& text) {
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        const std::size_t blank = std::min(line.find(' '), line.size());
        TDBLParameter* parameter = Parameter(TryParseInteger(line.substr(0, blank)).value_or(0));
        if (parameter) parameter->m_tie = Trimmed(std::string_view(line).substr(blank));
    }
    ++m_revision;
    SetStale(true);
}

std::span<const TSectionRow<TCurFit>> CurFitRows() {
    static constexpr TSectionRow<TCurFit> kRows[] = {
        CompositeRow<TCurFit, &TCurFit::WriteDefinition, &TCurFit::ReadDefinition>(39, "CurFit"),
        CompositeRow<TCurFit, &TCurFit::WriteSettings, &TCurFit::ReadSettings>(43, "CurveFit"),
        CompositeRow<TCurFit, &TCurFit::WriteTemplates, &TCurFit::ReadTemplates>(45, "CurveFit"),
        OptionalTextRow<TCurFit, &TCurFit::BoundsText, &TCurFit::SetBoundsText>(71, "FitBounds"),
        OptionalTextRow<TCurFit, &TCurFit::WeightingText, &TCurFit::SetWeightingText>(74, "FitWeighting"),
        OptionalTextRow<TCurFit, &TCurFit::TiesText, &TCurFit::SetTiesText>(75, "FitTies"),
    };
    return kRows;
}

void TCurFit::SaveToStream(TxyWriter& writer) const {
    for (const auto& row : CurFitRows()) row.write(writer, row, *this);
    writer.WriteEndOfSection("End");
}

void TCurFit::LoadFromStream(TxyReader& reader, bool compile) {
    TCurFit loaded;
    loaded.m_settings = m_settings; // for what the stream leaves out
    ReadEntries(reader, CurFitRows(), loaded);
    Forget();
    m_settings = loaded.m_settings;
    m_parameters = std::move(loaded.m_parameters);
    for (const auto& parameter : m_parameters) parameter->m_owner = this;
    m_templates = std::move(loaded.m_templates);
    ++m_revision;
    m_result.reset();
    m_fitError.clear();
    SetStale(true);
    if (compile) {
        TryCompile();
        ++m_revision;
    } else {
        Changed(false);
    }
    NotifyDisplay();
}

void TCurFit::SaveToFile(const std::string& name) const {
    TBytes bytes;
    TxyWriter writer(bytes);
    SaveToStream(writer);
    ReplaceFile(name, bytes);
}

void TCurFit::LoadFromFile(const std::string& name, bool compile) {
    const TBytes bytes = ReadWholeFile(name);
    try {
        TByteSource start(bytes);
        if (TxyReader(start).ReadKey() != CurFitRows().front().key) throw EStreamError("no definition");
        TByteSource source(bytes);
        TxyReader reader(source);
        LoadFromStream(reader, compile);
    } catch (const EStreamError&) {
        throw EStreamError(name + " is not a function file. Choose one that was saved as .lfn");
    } catch (const EConvertError&) {
        throw EStreamError(name + " is not a function file. Choose one that was saved as .lfn");
    }
}

void TCurFit::Assign(const TCurFit* other) {
    if (!other || other == this) return;
    TBytes bytes;
    TxyWriter writer(bytes, TEncoding::Compact);
    other->SaveToStream(writer);
    TByteSource source(bytes);
    TxyReader reader(source);
    LoadFromStream(reader, true);
}

} // namespace lumoplot
