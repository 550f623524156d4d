#include "Target.h"

#include <algorithm>
#include <iterator>

std::vector<Target> targetsOf(Target::Group group) {
    std::vector<Target> targets;
    std::copy_if(allTargets().begin(), allTargets().end(), std::back_inserter(targets),
                 [group](const Target& each) { return each.group == group; });
    return targets;
}
