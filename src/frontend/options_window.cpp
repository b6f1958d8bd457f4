#include "frontend/options_window.h"

#include "config/config_writer.h"
#include "gui/manager.h"

#include <algorithm>

void OptionsWindow::Build(Listener& scene) {
    listener = &scene;
    gui.AddWindow(this);
    caption = "Options";
    Place(0.21F, 0.2F);
    visible = false;
    resizeButton.state = GuiState::Disabled;
    closeButton.OnClick = [](GUI_Element* button) {
        auto& options = WindowOf<OptionsWindow>(button);
        options.Reset();
        options.Close();
    };
    OnResize = OnResized;
    cancel.caption = "Cancel";
    cancel.OnClick = closeButton.OnClick;
    ok.caption = "   OK";
    ok.OnClick = [](GUI_Element* button) { WindowOf<OptionsWindow>(button).Accept(); };
    pages.top = 0.01F;
    AddComponents(cancel, ok, pages);
    for (GUI_Page* page : std::initializer_list<GUI_Page*>{&general, &videoMode, &volumes})
        pages.AddPage(page);
    pages.SetActivePage(&general);
    general.Build();
    videoMode.Build();
    volumes.Build();
    SetSize(0.3F, 0.2F);
    Reset();
}

void OptionsWindow::Reset() {
    general.Show();
    videoMode.Show();
    volumes.Show();
}

void OptionsWindow::Close() {
    visible = false;
    listener->OptionsClosed();
}

void OptionsWindow::Accept() {
    if (videoMode.ApplyMode()) listener->VideoModeChanged();
    videoMode.ApplyLighting();
    Close();
    general.Apply();
    INI_Writer writer; // all three or none
    AudioPage::Store(writer);
    GeneralPage::Store(writer);
    VideoPage::Store(writer);
}

void OptionsWindow::OnResized(GUI_Window* window) {
    auto& options = static_cast<OptionsWindow&>(*window);
    options.width = std::max(options.width, 0.6F);
    options.height = std::max(options.height, 0.6F);
    options.pages.width = options.width - 0.04F;
    options.pages.height = options.height - 0.2F;
    const float top = options.height - 0.18F;
    options.cancel.Place(options.width - 0.2F, top);
    options.ok.Place(options.width - 0.37F, top);
}
