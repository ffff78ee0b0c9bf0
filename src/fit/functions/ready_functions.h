// The functions that are ready to be fitted: groups of equations with the meaning of their parameters,
// typical values for a picture, and what each parameter is to the data, from which its start value is
// estimated.
#pragma once

#include "fit/definition/cur_fit.h"

#include <span>
#include <string>
#include <vector>

namespace lumoplot {

/// What a parameter is to the data. Linear ones need no start value of their own.
enum class TParameterRole {
    Linear,    ///< the equation is linear in it
    Place,     ///< a place on the X axis
    Width,     ///< a distance on the X axis
    Scale,     ///< an X above 0, of any order of magnitude between the points
    Rate,      ///< 1/X, above 0
    Frequency, ///< periods for each unit of X
    Phase,     ///< an angle in rad
    Exponent,  ///< a number without a unit, about 1
    Share,     ///< a number between 0 and 1
    Energy,    ///< in J/mol, for X in kelvin
};

struct TReadyParameter {
    const char* Name;
    double Typical; ///< for the picture, and the value in a function file
    TParameterRole Role;
    const char* Unit; ///< "x", "y", "1/x", "y/x" in the units of the axes; else as it is ("rad"), or empty
    const char* Meaning;
};

struct TReadyFunction {
    const char* Name; ///< also that of its file
    const char* Group;
    const char* Title;
    const char* Sentence; ///< when to use it
    const char* XName;
    const char* Equation;
    double From; ///< the range of X of the picture
    double To;
    std::vector<TReadyParameter> Parameters;
};

/// All of them; those of a group follow each other.
XYGRAPH_EXPORT const std::vector<TReadyFunction>& ReadyFunctions();

/// The one of that name; null when there is none.
const TReadyFunction* FindReadyFunction(std::string_view name);
/// The one with the equation of the fit (blanks and letter case aside), its X variable and its parameters;
/// null when there is none.
const TReadyFunction* ReadyFunctionOf(const TCurFit& fit);

/// The unit in the caption of an axis: "s" in "Time [s]" and in "Time (s)"; empty when there is none.
XYGRAPH_EXPORT std::string UnitIn(const std::string& caption);

/// Puts equation, X variable and parameters, all varied, into the fit; its settings stay, its templates go.
/// Units are put together of those of the axes; the parameters of an axis without a unit have none.
XYGRAPH_EXPORT void UseReadyFunction(const TReadyFunction& function, TCurFit& fit,
                                     const std::string& xUnit = {}, const std::string& yUnit = {});

} // namespace lumoplot
