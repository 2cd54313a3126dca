// Work in progress: LeaguesModule arrives with the foundation.
