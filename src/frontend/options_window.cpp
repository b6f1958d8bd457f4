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
    closeButton.OnClick = OnCancel;
    OnResize = OnResized;
    cancel.caption = "Cancel";
    cancel.OnClick = OnCancel;
    ok.caption = "   OK";
    ok.OnClick = OnOk;
    pages.top = 0.01F;
    for (GUI_Component* part : std::initializer_list<GUI_Component*>{&cancel, &ok, &pages})
        AddComponent(part);
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

void OptionsWindow::OnOk(GUI_Element* button) {
    static_cast<OptionsWindow&>(*button->parent).Accept();
}

void OptionsWindow::OnCancel(GUI_Element* button) {
    auto& options = static_cast<OptionsWindow&>(*button->parent);
    options.Reset();
    options.Close();
}
