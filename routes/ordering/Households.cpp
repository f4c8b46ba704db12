#include "Households.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace kb::routes {

std::vector<std::pair<int, int>> Households::links(const std::vector<double>& stopNumbers)
{
    std::vector<int> numbered;
    for (int i = 0; i < int(stopNumbers.size()); ++i)
        if (stopNumbers[i] > 0.0) numbered.push_back(i);
    std::stable_sort(numbered.begin(), numbered.end(),
                     [&](int a, int b) { return stopNumbers[a] < stopNumbers[b]; });
    std::vector<std::pair<int, int>> result;
    for (std::size_t k = 1; k < numbered.size(); ++k) {
        const int a = numbered[k - 1];
        const int b = numbered[k];
        if (std::trunc(stopNumbers[a]) == std::trunc(stopNumbers[b])) result.emplace_back(a, b);
    }
    return result;
}

} // namespace kb::routes
