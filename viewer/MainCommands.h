// The commands of the main menu, of the shortcuts, and of the buttons in the window.
#pragma once

#include <cstddef>

namespace viewer {

class ControlHost;
class DocumentSelection;
class MainPages;
class NewsBar;
class PackageCare;
class PackageController;
class PackageVersions;
class PackageView;

class MainCommands {
public:
    /// All of them outlive it.
    MainCommands(PackageView& view, ControlHost& control, NewsBar& news, MainPages& pages,
                 PackageController& packages, PackageCare& care, PackageVersions& versions,
                 DocumentSelection& selection)
        : m_view(view), m_control(control), m_news(news), m_pages(pages), m_packages(packages), m_care(care),
          m_versions(versions), m_selection(selection) {}

    /// Carries out the command of this number.
    void Run(int command);

private:
    void BrowseForPackage();
    void OpenRecent(std::size_t index);
    void ShowPackageFolder();
    void ShowPackageProperties();
    void Paste();
    void FindDocumentFile();
    void FocusNextPane();

    PackageView& m_view;
    ControlHost& m_control;
    NewsBar& m_news;
    MainPages& m_pages;
    PackageController& m_packages;
    PackageCare& m_care;
    PackageVersions& m_versions;
    DocumentSelection& m_selection;
};

} // namespace viewer
