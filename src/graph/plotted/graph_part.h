// The parts of a picture that a user can point at.
#pragma once

namespace lumoplot {

enum class TGraphPart { None, Title, XAxis, YAxis, SecondYAxis, Legend, Plot };

} // namespace lumoplot
