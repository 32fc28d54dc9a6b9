#include "report/model/GraphTypes.h"

#include "shell/model/RuntimeError.h"

namespace quenby {

double PlotArray::at(int row, int column) const
{
    const std::vector<double>* r = row == 0 ? &x : row == 1 ? &y : nullptr;
    if (r == nullptr || column < 0 || column >= static_cast<int>(r->size()))
        throw RuntimeError(err::SubscriptOutOfRange, QStringLiteral("PlotArray"));
    return (*r)[static_cast<std::size_t>(column)];
}

} // namespace quenby
