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
    void FetchAgain(const std::string& page) {
        Console().GetKiwiList();
        Fetch().Deliver(page);
    }

    PopupMenu& Popup() { return Console().PopupMenuKiwiList; }
    Strings Rows() {
        Strings rows;
        for (int i = 0; i < Popup().ListCount(); ++i) {
            rows.push_back(Popup().RowText(i));
        }
        return rows;
    }
    // The rows of a popup that shows these below the site.
    static Strings SiteAnd(const Strings& others) {
        Strings rows = {"S1", "S2", "S3", "S4", "S5", "S6", "S7"};
        rows.insert(rows.end(), others.begin(), others.end());
        return rows;
    }
    std::string Target() {
        return Console().TextFieldAddress.Text() + ":" + Console().TextFieldPort.Text();
    }

    FolderItem FavoritesFile(SpecialFolder folder = SpecialFolder::ApplicationData) {
        return *desktop.Folder(folder).Child("favorite-kiwi.txt");
    }
    std::string StoredFavorites() { return ContentOf(FavoritesFile()); }
};

} // namespace larkspool
