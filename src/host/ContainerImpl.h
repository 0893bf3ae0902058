#pragma once

#include <tav/Container.h>
#include <tav/HostEditorNotifier.h>
#include <tav/Node.h>

#include "host/ContainerLink.h"

#include <set>
#include <string>
#include <vector>

namespace TAV_marlo_v1 {

class Runtime;

struct Container::Impl {
    detail::ContainerLink* link = nullptr; // made on first use
    AddRefWrapper<Node> topNode;
    // The ways back to where the container is filed, so that its death is noticed there. The virtual
    // getRuntime() can't be asked by then.
    std::vector<Runtime*> runtimes;
    std::set<std::string> uuids;
    // Last, so that it dies first: node notifiers that the container's bracket holds back then deliver
    // while the graph is still whole.
    HostEditorNotifier notifier;
};

} // namespace TAV_marlo_v1
