// The platform an application starts with: cairo + pango rendering
// (backends/) and the host's log sink (QVLog, qvhost/). The toolkit core
// (soui/) knows neither; this is where they are plugged in.
//
// The platform library registers InstallDefaultPlatform as the
// SApplication setup hook when it loads, so tests, benchmarks and the demo
// only construct an SApplication. A host that wants something else calls
// SApplication::SetDefaultSetup (or the setters) itself. Host services
// (message dispatch, user settings) need nothing here: qvhost makes them on
// first use.
#pragma once

namespace SOUI {

class SApplication;

void InstallDefaultPlatform(SApplication& app);

}  // namespace SOUI
