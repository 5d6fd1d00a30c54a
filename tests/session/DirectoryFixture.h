#pragma once

#include "directory/WindowFavoriteKiwis.h"
#include "support/ConsoleFixture.h"
#include "support/Files.h"

#include <string>
#include <vector>

namespace larkspool {

// A program with a public directory and a site of its own, and the user's favourites on disk.
class DirectoryFixture : public ConsoleFixture {
  protected:
    DirectoryFixture() {
        deployment.directoryHost = "list.example:8080";
        deployment.siteHost = "site.example";
        deployment.siteNames = {"S1", "S2", "S3", "S4", "S5", "S6", "S7"};
    }

    static std::string Entry(const std::string& name, const std::string& address) {
        return "<span class='cl-name'>" + name + "</span>\n<a href='http://" + address + "'>\n";
    }

    bool IsFetching() { return !desktop.httpSockets->empty() && !Fetch().url.empty(); }
    VirtualHTTPSocket& Fetch() { return *desktop.httpSockets->back(); }

    std::vector<std::string> Rows() {
        std::vector<std::string> rows;
        rows.reserve(static_cast<std::size_t>(Popup().ListCount()));
        for (int i = 0; i < Popup().ListCount(); ++i) {
            rows.push_back(Popup().RowText(i));
        }
        return rows;
    }
    PopupMenu& Popup() { return Console().PopupMenuKiwiList; }
    std::string Target() {
        return Console().TextFieldAddress.Text() + ":" + Console().TextFieldPort.Text();
    }

    FolderItem FavoritesFile(SpecialFolder folder = SpecialFolder::ApplicationData) {
        return *desktop.Folder(folder).Child("favorite-kiwi.txt");
    }
    void PutFavorites(const std::string& text,
                      SpecialFolder folder = SpecialFolder::ApplicationData) {
        Put(FavoritesFile(folder), text);
    }
    std::string StoredFavorites() { return ContentOf(FavoritesFile()); }

    const std::vector<std::string> site = {"S1", "S2", "S3", "S4", "S5", "S6", "S7"};

    // The rows of a popup that shows these below the site.
    std::vector<std::string> SiteAnd(const std::vector<std::string>& others) const {
        std::vector<std::string> rows = site;
        rows.insert(rows.end(), others.begin(), others.end());
        return rows;
    }
};

} // namespace larkspool
