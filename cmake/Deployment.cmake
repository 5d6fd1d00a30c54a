# Every value that a deployer sets. LARKSPOOL_DEPLOYMENT picks the defaults:
# "demo" points the program at the demo receivers on this computer, "world" at
# the public directory, without a receiver site or a version server of its own.
set(LARKSPOOL_DEPLOYMENT "demo" CACHE STRING "Defaults of the deployment values: demo or world")

# A new choice in an existing build folder sets its own defaults.
set(force "")
if(DEFINED LARKSPOOL_DEPLOYMENT_BEFORE AND NOT LARKSPOOL_DEPLOYMENT_BEFORE STREQUAL LARKSPOOL_DEPLOYMENT)
  set(force FORCE)
endif()
set(LARKSPOOL_DEPLOYMENT_BEFORE ${LARKSPOOL_DEPLOYMENT} CACHE INTERNAL "")

function(larkspool_deployment name demo world help)
  if(LARKSPOOL_DEPLOYMENT STREQUAL "world")
    set(${name} "${world}" CACHE STRING "${help}" ${force})
  else()
    set(${name} "${demo}" CACHE STRING "${help}" ${force})
  endif()
endfunction()

larkspool_deployment(LARKSPOOL_DIRECTORY_HOST "127.0.0.1:8080" "kiwisdr.com"
  "Host of the public receiver list, with :port where it is not 80")
larkspool_deployment(LARKSPOOL_VERSION_HOST "" ""
  "Host of the version server; empty: the update check never runs")
larkspool_deployment(LARKSPOOL_SITE_HOST "127.0.0.1" ""
  "Host of the receiver site behind the seven built-in rows; empty: no such rows")
larkspool_deployment(LARKSPOOL_SITE_NAME_1 "Demo site, 20 m dipole" "" "Name of the site's receiver on port 8073")
larkspool_deployment(LARKSPOOL_SITE_NAME_2 "Demo site, 40 m dipole" "" "Name of the site's receiver on port 8074")
larkspool_deployment(LARKSPOOL_SITE_NAME_3 "Demo site, 80 m dipole" "" "Name of the site's receiver on port 8075")
larkspool_deployment(LARKSPOOL_SITE_NAME_4 "Demo site, 160 m beverage north" "" "Name of the site's receiver on port 8076")
larkspool_deployment(LARKSPOOL_SITE_NAME_5 "Demo site, 160 m beverage west" "" "Name of the site's receiver on port 8077")
larkspool_deployment(LARKSPOOL_SITE_NAME_6 "Demo site, active loop" "" "Name of the site's receiver on port 8078")
larkspool_deployment(LARKSPOOL_SITE_NAME_7 "Demo site, 2 m whip in the attic" "" "Name of the site's receiver on port 8079")
larkspool_deployment(LARKSPOOL_PRODUCT_PAGE "http://127.0.0.1:8080/" ""
  "Address of the product's page; empty: the menu item and the button that open it are disabled")
larkspool_deployment(LARKSPOOL_DOWNLOAD_PAGE "" ""
  "Address of the page that the update check offers to open")
larkspool_deployment(LARKSPOOL_PROGRAM_NUMBER "1" "1"
  "The product's number at the version server")
larkspool_deployment(LARKSPOOL_MAINTAINER "Larkspool <root@localhost>" "Larkspool <root@localhost>"
  "Who makes the package and answers for it: name and mail address")

if(LARKSPOOL_VERSION_HOST AND NOT LARKSPOOL_DOWNLOAD_PAGE)
  message(WARNING "LARKSPOOL_VERSION_HOST is set without LARKSPOOL_DOWNLOAD_PAGE: "
    "the update check will offer to open a page that it has no address of")
endif()
