#include "app/app_state_win.h"

namespace vrl {

AppState& App() {
    static AppState state;
    return state;
}

}  // namespace vrl
