// Columns of a table that share its width, without cutting their captions.
#pragma once

class QHeaderView;

namespace lumoplot {

/// From now on no column gets narrower than the longest caption; a table without room for all scrolls. The
/// header has its model.
void KeepCaptionsWhole(QHeaderView& header);

} // namespace lumoplot
